#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace bench {

/// What one comparison gave. Times are milliseconds, medians of interleaved repetitions.
struct Row {
    std::string name;
    std::size_t count;
    double product;
    double bare;
    double bound; ///< the largest ratio that is good enough; 0 = none at this size

    double ratio() const { return product / bare; }
    bool missed() const { return bound > 0.0 && ratio() > bound; }
};

/// Compares the product with the least that the same work can cost, in turn: whatever slows the machine
/// slows both.
class Ratios {
public:
    struct Subject {
        std::string name;
        std::size_t count;
        double bound;
        int rounds = 31;
    };
    template <class Product, class Bare>
    void compare(const Subject& subject, Product&& product, Bare&& bare)
    {
        std::vector<double> productTimes, bareTimes;
        product(), bare();
        for (int round = 0; round < subject.rounds; ++round) {
            productTimes.push_back(milliseconds(product));
            bareTimes.push_back(milliseconds(bare));
        }
        rows.push_back({subject.name, subject.count, median(productTimes), median(bareTimes), subject.bound});
    }

    /// Prints the table; returns how many bounds were missed.
    int print() const;

private:
    template <class Function>
    static double milliseconds(Function& run)
    {
        const auto start = std::chrono::steady_clock::now();
        run();
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    }
    static double median(std::vector<double>& times)
    {
        const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
        std::nth_element(times.begin(), middle, times.end());
        return *middle;
    }

    std::vector<Row> rows;
};

// The groups of comparisons, each at one number of vertices. Bounds hold at 100,000.
void compareStrokes(Ratios& ratios, std::size_t columns, std::size_t lines);
void compareSkinning(Ratios& ratios, std::size_t columns, std::size_t lines);
void compareLabels(Ratios& ratios, std::size_t count);
void comparePaste(Ratios& ratios, std::size_t columns, std::size_t lines);

/// The bound at the size where it was set; none elsewhere.
inline double boundAt(std::size_t count, double bound)
{
    return count == 100000 ? bound : 0.0;
}

/// Throws when the measured thing did not do its work.
void require(bool good, const std::string& what);

} // namespace bench
