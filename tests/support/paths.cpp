#include "support/paths.h"

namespace testing_support {

std::string sourceDir()
{
    return SOURCE_DIR;
}

std::string buildDir()
{
    return BUILD_DIR;
}

std::string mayaScenesDir()
{
    return MAYA_SCENES;
}

std::string libraryPath(const std::string& name)
{
    return buildDir() + "/lib/" + name + ".so";
}

} // namespace testing_support
