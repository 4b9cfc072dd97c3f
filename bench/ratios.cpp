#include "ratios.h"

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <utility>

namespace bench {

namespace {

/// What the work takes when nothing else gets in its way.
double least(const std::vector<double>& times)
{
    if (times.empty())
        throw std::runtime_error("Nothing was measured.");
    return *std::min_element(times.begin(), times.end());
}

constexpr double kMilliseconds = 1e3;

} // namespace

Row Contest::row()
{
    return {subject, least(productTimes) * kMilliseconds, least(bareTimes) * kMilliseconds};
}

void Ratios::add(const Subject& subject, std::function<void(Contest&)> body)
{
    const std::string name = subject.name + "/" + std::to_string(subject.count);
    benchmark::RegisterBenchmark(
        name.c_str(),
        [this, subject, body = std::move(body)](benchmark::State& state) { measure(state, subject, body); })
        ->Iterations(subject.rounds)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

void Ratios::measure(benchmark::State& state, const Subject& subject,
                     const std::function<void(Contest&)>& body)
{
    try {
        Contest contest(state, subject);
        body(contest);
        const Row row = contest.row();
        state.counters["least_ms"] = row.product;
        state.counters["bare_ms"] = row.bare;
        state.counters["ratio"] = row.ratio();
        rows.push_back(row);
    } catch (const std::exception& error) {
        state.SkipWithError(error.what());
        broken = true;
    }
}

void Ratios::print() const
{
    std::printf("\n%-34s %9s %12s %12s %8s %8s\n", "what", "vertices", "product ms", "bare ms", "ratio",
                "bound");
    for (const Row& row : rows) {
        std::printf("%-34s %9zu %12.3f %12.3f %8.2f ", row.subject.name.c_str(), row.subject.count,
                    row.product, row.bare, row.ratio());
        if (row.subject.bound > 0.0)
            std::printf("%8.1f%s\n", row.subject.bound, row.missed() ? "  missed" : "");
        else
            std::printf("%8s\n", "-");
    }
}

bool Ratios::anyMissed() const
{
    return std::any_of(rows.begin(), rows.end(), [](const Row& row) { return row.missed(); });
}

void require(bool good, const std::string& what)
{
    if (!good)
        throw std::runtime_error(what);
}

} // namespace bench
