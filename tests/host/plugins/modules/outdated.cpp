// A plug-in that was built against the interface of another year: its entry points have other names, because
// the classes live in that year's namespace.

namespace Autodesk {
namespace Maya {
namespace OpenMaya20190000 {
class MObject;
class MStatus;
} // namespace OpenMaya20190000
} // namespace Maya
} // namespace Autodesk

#define EXPORTED __attribute__((visibility("default")))

extern "C" EXPORTED const char MApiVersion[];
const char MApiVersion[] = "20190000";

using namespace Autodesk::Maya::OpenMaya20190000;

EXPORTED MStatus* initializePlugin(MObject*)
{
    return nullptr;
}

EXPORTED MStatus* uninitializePlugin(MObject*)
{
    return nullptr;
}
