// Faults a test puts into drav-report through LD_PRELOAD, as a machine at
// its limits would give them:
//   DRAV_NO_THREADS=1      no thread can be started (pthread_create: EAGAIN)
//   DRAV_FAIL_THREAD=N     on the Nth thread the process starts (the main
//   DRAV_FAIL_BYTES=B      thread is 0), every allocation of B bytes or more
//                          fails, as when memory runs out
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <pthread.h>
#include <stdlib.h>

extern void* __libc_malloc(size_t size);
extern void __libc_free(void* block);

static int noThreads;
static int failThread = -1;
static size_t failBytes = (size_t)-1;
static int started;             // threads started so far
static __thread int ordinal;    // this thread's place among them

__attribute__((constructor)) static void ReadSettings(void) {
  const char* value = getenv("DRAV_NO_THREADS");
  noThreads = value && *value == '1';
  if ((value = getenv("DRAV_FAIL_THREAD"))) failThread = atoi(value);
  if ((value = getenv("DRAV_FAIL_BYTES"))) failBytes = (size_t)strtoull(value, NULL, 10);
}

void* malloc(size_t size) {
  if (ordinal == failThread && size >= failBytes) {
    errno = ENOMEM;
    return NULL;
  }
  return __libc_malloc(size);
}

struct Start {
  void* (*routine)(void*);
  void* argument;
  int ordinal;
};

static void* Started(void* start) {
  struct Start s = *(struct Start*)start;
  __libc_free(start);
  ordinal = s.ordinal;
  return s.routine(s.argument);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*routine)(void*), void* argument) {
  typedef int (*Create)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
  static Create create;
  if (noThreads) return EAGAIN;
  if (!create) create = (Create)dlsym(RTLD_NEXT, "pthread_create");
  struct Start* start = __libc_malloc(sizeof *start);
  if (!start) return EAGAIN;
  start->routine = routine;
  start->argument = argument;
  start->ordinal = __atomic_add_fetch(&started, 1, __ATOMIC_RELAXED);
  const int status = create(thread, attributes, Started, start);
  if (status != 0) __libc_free(start);
  return status;
}
