#pragma once
#include <cstdint>
#include <string>

#include "shell/application.hpp"

namespace drav {

// The application object of Drav: the version data and the menu bar.
// All behaviour lives in the windows' handlers.
class Drav : public Application {
 public:
  Drav(int& argc, char** argv);

  std::int64_t MajorVersion() const { return x_mMajorVersion_; }
  std::int64_t MinorVersion() const { return x_mMinorVersion_; }
  std::int64_t BugVersion() const { return x_mBugVersion_; }
  std::int64_t NonReleaseVersion() const { return x_mNonReleaseVersion_; }
  std::int64_t StageCode() const { return x_mStageCode_; }
  const std::string& LongVersion() const { return x_mLongVersion_; }
  const std::string& ShortVersion() const { return x_mShortVersion_; }
  const std::string& Version() const { return x_mShortVersion_; }
  const std::string& PackageInfo() const { return x_mPackageInfo_; }

 private:
  void _x_SetVersionData(std::int64_t major, std::int64_t minor, std::int64_t bug, std::int64_t nonRelease,
                         std::int64_t stage, std::string longVersion, std::string shortVersion,
                         std::string packageInfo);

  std::int64_t x_mMajorVersion_ = 0, x_mMinorVersion_ = 0, x_mBugVersion_ = 0, x_mNonReleaseVersion_ = 0;
  std::int64_t x_mStageCode_ = 0;
  std::string x_mLongVersion_, x_mShortVersion_, x_mPackageInfo_;
};

}  // namespace drav
