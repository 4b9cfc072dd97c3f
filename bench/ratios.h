#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace bench {

/// One comparison of the product with the least that the same work can cost.
struct Subject {
    std::string name;
    std::size_t count;  ///< vertices
    double bound = 0.0; ///< the largest ratio that is good enough; 0 = none at this size
    int rounds = 31;
};

/// What one comparison gave. Times are milliseconds, the least of interleaved rounds.
struct Row {
    Subject subject;
    double product;
    double bare;

    double ratio() const { return product / bare; }
    bool missed() const { return subject.bound > 0.0 && ratio() > subject.bound; }
};

/// Runs the two sides of a comparison in turn, so that whatever slows the machine slows both.
class Contest {
public:
    Contest(benchmark::State& benchmarkState, const Subject& compared)
        : state(benchmarkState), subject(compared)
    {}

    /// Each side does the whole work once per call. The first round of both is not counted.
    template <class Product, class Bare>
    void run(Product&& product, Bare&& bare)
    {
        product(), bare();
        while (next()) {
            this->product(product);
            this->bare(bare);
        }
    }
    /// For sides that need something done in between, which is not timed:
    /// `while (next()) { product(...); bare(...); }`.
    bool next() { return state.KeepRunning(); }
    template <class Work>
    void product(Work&& work)
    {
        productTimes.push_back(seconds(work));
        state.SetIterationTime(productTimes.back());
    }
    template <class Work>
    void bare(Work&& work)
    {
        bareTimes.push_back(seconds(work));
    }
    /// Once something has been timed.
    Row row();

private:
    template <class Function>
    static double seconds(Function& run)
    {
        const auto start = std::chrono::steady_clock::now();
        run();
        benchmark::ClobberMemory();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

    benchmark::State& state;
    const Subject& subject;
    std::vector<double> productTimes, bareTimes;
};

/// All comparisons of a run; must outlive it.
class Ratios {
public:
    /// Registers a benchmark. The body prepares both sides, calls run() once and checks what they did; it
    /// throws when that went wrong, and the run ends with an error.
    void add(const Subject& subject, std::function<void(Contest&)> body);

    /// Prints what was run as a table.
    void print() const;
    bool anyMissed() const;
    bool anyBroken() const { return broken; }

private:
    void measure(benchmark::State& state, const Subject& subject, const std::function<void(Contest&)>& body);

    std::vector<Row> rows;
    bool broken = false;
};

// The groups of comparisons, each at one number of vertices. Bounds hold at 100,000.
void addStrokes(Ratios& ratios, std::size_t columns, std::size_t lines);
void addSkinStrokes(Ratios& ratios, std::size_t columns, std::size_t lines);
void addLayers(Ratios& ratios, std::size_t columns, std::size_t lines);
void addSkinning(Ratios& ratios, std::size_t columns, std::size_t lines);
void addLabels(Ratios& ratios, std::size_t count);
void addPaste(Ratios& ratios, std::size_t columns, std::size_t lines);

/// The bound at the size where it was set; none elsewhere.
inline double boundAt(std::size_t count, double bound)
{
    return count == 100000 ? bound : 0.0;
}

/// Throws when the measured thing did not do its work.
void require(bool good, const std::string& what);

} // namespace bench
