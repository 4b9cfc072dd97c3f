// The product next to bare loops over plain arrays, as ratios. With --check a missed bound is exit status 1.
#include "ratios.h"

#include <cstdio>
#include <cstring>
#include <exception>
#include <stdexcept>

namespace bench {

int Ratios::print() const
{
    int missed = 0;
    std::printf("%-34s %9s %12s %12s %8s %8s\n", "what", "vertices", "product ms", "bare ms", "ratio",
                "bound");
    for (const Row& row : rows) {
        std::printf("%-34s %9zu %12.3f %12.3f %8.2f ", row.name.c_str(), row.count, row.product, row.bare,
                    row.ratio());
        if (row.bound > 0.0)
            std::printf("%8.1f%s\n", row.bound, row.missed() ? "  missed" : "");
        else
            std::printf("%8s\n", "-");
        missed += row.missed() ? 1 : 0;
    }
    return missed;
}

void require(bool good, const std::string& what)
{
    if (!good)
        throw std::runtime_error(what);
}

} // namespace bench

int main(int argumentCount, char** arguments)
{
    const bool check = argumentCount == 2 && std::strcmp(arguments[1], "--check") == 0;
    if (argumentCount > 1 && !check) {
        std::fprintf(stderr, "usage: bench_tool [--check]\n");
        return 2;
    }
    bench::Ratios ratios;
    bool broken = false;
    const auto attempt = [&](auto&& group) {
        try {
            group();
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s\n", error.what());
            broken = true;
        }
    };
    static const std::size_t sizes[][2] = {{100, 100}, {500, 200}, {1000, 1000}};
    for (const auto& size : sizes) {
        attempt([&] { bench::compareSkinning(ratios, size[0], size[1]); });
        attempt([&] { bench::compareLabels(ratios, size[0] * size[1]); });
        attempt([&] { bench::comparePaste(ratios, size[0], size[1]); });
        attempt([&] { bench::compareStrokes(ratios, size[0], size[1]); });
    }
    const int missed = ratios.print();
    if (broken)
        return 2;
    return check && missed > 0 ? 1 : 0;
}
