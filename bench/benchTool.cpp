// The product next to bare loops over plain arrays, as ratios. With --check a missed bound is exit status 1;
// all other options are those of Google Benchmark.
#include "ratios.h"

#include <algorithm>
#include <cstring>

namespace {

/// Takes the option out of the arguments; whether it was there.
bool takeOption(int& count, char** arguments, const char* option)
{
    char** const end = arguments + count;
    char** const kept = std::remove_if(arguments + std::min(count, 1), end, [option](const char* argument) {
        return std::strcmp(argument, option) == 0;
    });
    count = static_cast<int>(kept - arguments);
    return kept != end;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const bool check = takeOption(argumentCount, arguments, "--check");
    benchmark::Initialize(&argumentCount, arguments);
    if (benchmark::ReportUnrecognizedArguments(argumentCount, arguments))
        return 2;
    bench::Ratios ratios;
    static const std::size_t sizes[][2] = {{100, 100}, {500, 200}, {1000, 1000}};
    for (const auto& size : sizes) {
        bench::addSkinning(ratios, size[0], size[1]);
        bench::addLabels(ratios, size[0] * size[1]);
        bench::addPaste(ratios, size[0], size[1]);
        bench::addStrokes(ratios, size[0], size[1]);
        bench::addSkinStrokes(ratios, size[0], size[1]);
        bench::addLayers(ratios, size[0], size[1]);
    }
    const bool any = benchmark::RunSpecifiedBenchmarks() > 0;
    ratios.print();
    benchmark::Shutdown();
    if (!any || ratios.anyBroken())
        return 2;
    return check && ratios.anyMissed() ? 1 : 0;
}
