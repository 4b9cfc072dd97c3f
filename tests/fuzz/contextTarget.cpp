// Any arguments for the tool's command, one call a line: words with a dash are flags, numbers are numbers, *
// is an array of what follows it, the rest are texts. "> x y" is a stroke instead, from the middle of the
// view.
#include "fuzzHost.h"

#include "mel/command.h"
#include "support/paths.h"
#include "types/error.h"

#include <sstream>

namespace {

using host::mel::Value;
using host::mel::Word;

std::string preparation()
{
    return "loadPlugin \"" + testing_support::libraryPath("morvane") + "\"; loadPlugin \"" +
           testing_support::libraryPath("layerStandIn") +
           "\"; polyPlane -n sheet -w 10 -h 5 -sx 2 -sy 1; polyPlane -n smile -w 10 -h 5 -sx 2 -sy 1;"
           "move -r 0 1 0 smile.vtx[1:2]; select -cl; joint -n hip -p -5 0 0; joint -n knee -p 4 0 0;"
           "skinCluster -tsb -n skin hip knee sheet; setAttr skin.skinningMethod 2; setAttr knee.rotateX 60;"
           "cluster -n lift sheet; setAttr liftHandle.ty 1; blendShape -n face smile sheet; setAttr "
           "face.smile .5;"
           "ngst2Layers -e -attach |sheet|sheetShape;"
           "ngst2Layers -e -addLayer \"skinLayer\" -parent -1 |sheet|sheetShape;"
           "setAttr persp.rotate -type double3 -55 12 0; viewFit sheet; setToolTo morvaneContext1;"
           "select sheet.vtx[0:5]";
}

Word wordOf(const std::string& text)
{
    bool isNumber = false;
    const double number = host::mel::parseNumber(text, &isNumber);
    if (isNumber)
        return {Value(number), Word::Kind::kComputed};
    if (text[0] == '*')
        return {Value(host::mel::StringArray{text.substr(1), text.substr(1)}), Word::Kind::kComputed};
    return {Value(text), text[0] == '-' ? Word::Kind::kFlag : Word::Kind::kLiteral};
}

/// From a vertex to a pixel of the view.
void stroke(fuzzing::FuzzHost& host, std::istringstream& pixel)
{
    int x = 0, y = 0;
    pixel >> x >> y;
    const std::string to = std::to_string(x % 500) + " " + std::to_string(y % 500);
    host.mel("int $at[] = `viewportProject \"sheet.vtx[1]\"`; viewportEvent -press $at[0] $at[1];"
             "viewportEvent -drag " +
             to + "; viewportEvent -release " + to);
}

void runLine(fuzzing::FuzzHost& host, const std::string& line)
{
    std::istringstream stream(line);
    std::vector<Word> words;
    for (std::string word; stream >> word;) {
        if (word == ">")
            return stroke(host, stream);
        words.push_back(wordOf(word));
    }
    words.push_back({Value("morvaneContext1"), Word::Kind::kLiteral});
    try {
        host.session.commands().call("morvaneContext", std::move(words));
    } catch (const host::Error&) {
        // A refusal.
    }
    host.idle();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    return fuzzing::keepLoaded("morvane") && fuzzing::keepLoaded("layerStandIn") ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzzing::FuzzHost host(preparation());
    std::istringstream lines(fuzzing::textOf(data, size));
    int calls = 0;
    for (std::string line; calls < 50 && std::getline(lines, line); ++calls)
        runLine(host, line);
    host.mel("undo; undo; redo; setToolTo selectSuperContext; undo");
    return 0;
}
