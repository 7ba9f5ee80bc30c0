#include "app/drav_app.hpp"

#include <QIcon>

#include "windows/menu_bar1.hpp"
#include "windows/pictures.hpp"

namespace drav {

Drav::Drav(int& argc, char** argv) : Application(argc, argv) {
  _x_SetVersionData(2, 1, 0, 0, 3, "Drav 2.1, made by the Drav project", "2.1", "Drav");
  AppMenuBar = MenuBar1::Shared();
  setApplicationName(QStringLiteral("Drav"));
  setApplicationVersion(QStringLiteral("2.1"));
  // The splash panel shows the same picture: it is decoded once, here.
  if (const auto& icon = _x_Drav256()) setWindowIcon(QIcon(icon->Pixmap()));
}

void Drav::_x_SetVersionData(std::int64_t major, std::int64_t minor, std::int64_t bug, std::int64_t nonRelease,
                             std::int64_t stage, std::string longVersion, std::string shortVersion,
                             std::string packageInfo) {
  x_mMajorVersion_ = major;
  x_mMinorVersion_ = minor;
  x_mBugVersion_ = bug;
  x_mNonReleaseVersion_ = nonRelease;
  x_mStageCode_ = stage;
  x_mLongVersion_ = std::move(longVersion);
  x_mShortVersion_ = std::move(shortVersion);
  x_mPackageInfo_ = std::move(packageInfo);
}

}  // namespace drav
