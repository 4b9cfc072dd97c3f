#pragma once

#include <string>

namespace testing_support {

/// The checkout, the build folder and the folder of scenes that Maya saved (empty where there are none).
/// Functions, so that only one object of the tests depends on where the checkout stands.
std::string sourceDir();
std::string buildDir();
std::string mayaScenesDir();

/// A library of this build, by its name without folder and ending.
std::string libraryPath(const std::string& name);

} // namespace testing_support
