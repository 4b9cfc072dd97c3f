// Any text as what the layer command tells about its layers (up to a zero byte), and about weights (behind
// it).
#include "fuzzHost.h"

#include "mel/command.h"
#include "mel/value.h"
#include "support/paths.h"

#include <algorithm>

namespace {

using namespace host::mel;

std::string preparation()
{
    return "loadPlugin \"" + testing_support::libraryPath("morvane") +
           "\"; polyPlane -n sheet -w 10 -h 5 -sx 2 -sy 1; select -cl; joint -n hip -p -5 0 0;"
           "joint -n knee -p 4 0 0; skinCluster -tsb -n skin hip knee sheet; setAttr knee.rotateX 60;"
           "loadPlugin \"" +
           testing_support::libraryPath("layerStandIn") +
           "\"; ngst2Layers -e -attach |sheet|sheetShape;"
           "setAttr persp.rotate -type double3 -55 12 0; viewFit sheet; select sheet.vtx[0:5]";
}

FloatArray numbersIn(const std::string& text)
{
    FloatArray numbers;
    for (std::size_t at = 0; at < text.size(); at = std::min(text.find(' ', at), text.size() - 1) + 1)
        numbers.push_back(parseNumber(text.substr(at, 32)));
    return numbers;
}

/// In place of the layer command one that tells whatever it was given.
void replaceLayerCommand(host::Session& session, const std::string& list, const FloatArray& weights)
{
    session.commands().remove("ngst2Layers");
    session.commands().addRaw(
        "ngst2Layers", [list, weights](host::Session&, const std::vector<Value>& words) {
            const auto asks = [&](const char* flag) {
                return std::find(words.begin(), words.end(), Value(flag)) != words.end();
            };
            if (asks("-ll"))
                return Value(list);
            if (asks("-vertexWeights") && asks("-q"))
                return Value(weights);
            return asks("-vertexCount") ? Value(6) : Value();
        });
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    return fuzzing::keepLoaded("morvane") && fuzzing::keepLoaded("layerStandIn") ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string input = fuzzing::textOf(data, size);
    const std::size_t zero = std::min(input.find('\0'), input.size());
    fuzzing::FuzzHost host(preparation());
    replaceLayerCommand(host.session, input.substr(0, zero),
                        zero < input.size() ? numbersIn(input.substr(zero + 1)) : FloatArray());
    host.mel("morvaneContext -e -deformer skin -influence knee -weightMode ngSkinToolsMask -ngLayer "
             "\"skinLayer\" morvaneContext1;"
             "setToolTo morvaneContext1");
    for (const char* mode : {"ngSkinToolsMask", "ngSkinToolsDualQuaternion", "ngSkinToolsInfluence"})
        host.mel(
            std::string("morvaneContext -e -weightMode ") + mode +
            " morvaneContext1; int $at[] = `viewportProject \"sheet.vtx[1]\"`;"
            "viewportEvent -press $at[0] $at[1]; viewportEvent -drag ($at[0] + 30) ($at[1] + 30);"
            "viewportEvent -release ($at[0] + 30) ($at[1] + 30);"
            "morvaneContext -e -copy true morvaneContext1; morvaneContext -e -paste true morvaneContext1");
    host.mel("undo; undo; redo; setToolTo selectSuperContext");
    return 0;
}
