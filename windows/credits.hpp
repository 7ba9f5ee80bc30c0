#pragma once
// The credit texts that are the program's own.
namespace drav {

// Under the title of the main window.
inline constexpr const char* ByLine = "Akaike weights and evidence ratios from your AIC values \xE2\x80\x94 the Drav project";
// On the splash panel.
inline constexpr const char* SplashCredit = "Drav 2.1 \xC2\xA9 the Drav project";

}  // namespace drav
