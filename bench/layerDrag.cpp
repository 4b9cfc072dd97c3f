// What a drag event on a layer mask costs on a mesh of 100,000 vertices, against what formatting and parsing
// as many numbers costs alone. The event holds all that happens until the skin has its new weights: the tool,
// the command's way through the host, and the stand-in's layers. Labels are off, since they would have the
// mesh deformed. Exit status 1 when it is 1.5 times as much or more.
#include "mel/interpreter.h"
#include "session.h"
#include "types/error.h"

#include <maya/MString.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kVertices = 500 * 200;
constexpr int kRounds = 31;
constexpr double kLimit = 1.5;

template <class Function>
double milliseconds(Function&& run)
{
    const auto start = std::chrono::steady_clock::now();
    run();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> times)
{
    std::nth_element(times.begin(), times.begin() + kRounds / 2, times.end());
    return times[kRounds / 2];
}

std::string formatted(const std::vector<double>& values)
{
    std::string text;
    text.reserve(values.size() * 8);
    MString number;
    for (const double value : values) {
        number.clear();
        number += value;
        text.append(number.asChar(), number.length());
        text += ',';
    }
    return text;
}

std::vector<double> parsed(const std::string& text)
{
    std::vector<double> values;
    values.reserve(kVertices);
    const char* const last = text.data() + text.size();
    for (const char* next = text.data(); next != last;) {
        double value = 0.0;
        next = std::from_chars(next, last, value).ptr + 1;
        values.push_back(value);
    }
    return values;
}

const char* const kScene =
    "polyPlane -n sheet -w 10 -h 5 -sx 499 -sy 199; select -cl; joint -n hip -p -5 0 0; joint -n knee -p 0 0 "
    "0;"
    "skinCluster -tsb -mi 3 -dr 4 -n skin hip knee sheet; setAttr knee.translateY 2; viewFit sheet;"
    "loadPlugin \"" BUILD_DIR "/lib/morvane.so\"; loadPlugin \"" BUILD_DIR "/lib/layerStandIn.so\";"
    "ngst2Layers -e -attach |sheet|sheetShape; ngst2Layers -e -addLayer skinLayer |sheet|sheetShape;";
const char* const kTool =
    "morvaneContext -e -deformer skin -ngLayer skinLayer morvaneContext1;"
    "morvaneContext -e -weightMode ngSkinToolsMask -displayWeights false morvaneContext1;"
    "setToolTo morvaneContext1; select -r sheet.vtx[50250];";

void paint(host::Session& session, const char* target, const std::vector<double>& values)
{
    std::string list = formatted(values);
    list.pop_back();
    session.mel().execute(std::string("ngst2Layers -e -id 1 -paintTarget ") + target + " -vertexWeights \"" +
                          list + "\" |sheet|sheetShape");
}

int measure()
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> weight(0.0, 1.0);
    std::vector<double> mask(kVertices);
    std::generate(mask.begin(), mask.end(), [&] { return weight(random); });

    host::Session session;
    session.mel().execute(kScene);
    paint(session, "1", std::vector<double>(kVertices, 1.0));
    paint(session, "mask", mask);
    session.mel().execute(kTool);
    const std::vector<int> at = session.mel().execute("viewportProject \"sheet.vtx[50250]\"").toIntArray();
    const auto event = [&](const char* kind, int up) {
        session.mel().execute(std::string("viewportEvent -") + kind + " " + std::to_string(at[0]) + " " +
                              std::to_string(at[1] + up));
    };
    event("press", 0);
    std::vector<double> drags, alone;
    for (int round = 0; round < kRounds; ++round) {
        drags.push_back(milliseconds([&] { event("drag", 1 + round); }));
        alone.push_back(milliseconds([&] { mask = parsed(formatted(mask)); }));
    }
    event("release", kRounds);

    const double ratio = median(drags) / median(alone);
    std::printf("drag event %.2f ms, formatting and parsing %.2f ms, ratio %.2f (limit %.1f)\n",
                median(drags), median(alone), ratio, kLimit);
    return ratio < kLimit ? 0 : 1;
}

} // namespace

int main()
{
    try {
        return measure();
    } catch (const host::Error& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
}
