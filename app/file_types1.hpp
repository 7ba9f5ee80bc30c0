#pragma once
// The one file type the program registers with the system: plain text with
// the extensions .txt and dat. It plays no part in reading a file; the open
// dialog of an analysis offers every file. On Linux the registration stays
// data here; the desktop entry claims no type, because a file handed over by
// a file manager would never reach the program.
#include <string>
#include <vector>

namespace drav {

class FileType {
 public:
  std::string Name;
  std::string Extensions;
  std::string MacType;
  std::string MacCreator;
  std::string MimeType;
  bool Imported = false;
  std::string ConformsTo;
  std::string UTI;

  // Registers the type once; a second call registers nothing.
  void Register();
  bool Registered() const { return registered_; }

 private:
  bool registered_ = false;
};

namespace FileTypes1 {

// The text type; nil until the types are initialised.
FileType* Text();
// Every type of the set, in order.
const std::vector<FileType*>& All();

namespace internal {
// Makes and registers the types; once per run, before the application object.
void Initialize();
}  // namespace internal

}  // namespace FileTypes1

// What the runtime was asked to register, in order: name, creator, type,
// extensions and UTI of each.
const std::vector<std::vector<std::string>>& RegisteredFileTypes();

}  // namespace drav
