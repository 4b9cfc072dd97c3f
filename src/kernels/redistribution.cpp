#include "kernels/redistribution.h"

namespace {

/// Rows of one table that stand for other influences than the edited one.
std::vector<std::size_t> otherRows(const InfluenceTable& table, unsigned int influence)
{
    std::vector<std::size_t> others;
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        if (static_cast<unsigned int>(table.logicalIndices[row]) != influence)
            others.push_back(row);
    }
    return others;
}

} // namespace

bool canRedistribute(const InfluenceTable& table, unsigned int influence, std::size_t vertexCount)
{
    const std::size_t count = table.rows.size();
    if (table.logicalIndices.size() != count || influence >= count)
        return false;
    for (std::size_t row = 0; row < count; ++row) {
        const int logical = table.logicalIndices[row];
        if (logical < 0 || static_cast<std::size_t>(logical) >= count ||
            table.rows[row].size() != vertexCount)
            return false;
    }
    return true;
}

std::vector<std::vector<double>> redistribute(const InfluenceTable& table, unsigned int influence,
                                              const std::vector<double>& newWeights, bool distribute)
{
    const std::vector<std::size_t> others = otherRows(table, influence);
    const std::vector<std::vector<double>>& old = table.rows;
    std::vector<std::vector<double>> result(old.size());
    for (std::size_t vertex = 0; vertex < newWeights.size(); ++vertex) {
        const double delta = newWeights[vertex] - old[influence][vertex];
        if (!(delta > 0.0) && !(delta < 0.0 && distribute))
            continue;
        double sum = 0.0;
        for (std::size_t row : others)
            sum += old[row][vertex];
        double handed = delta;
        if (delta > 0.0) {
            if (!(sum + newWeights[vertex] > 1.0))
                continue;
            handed = 1.0 - (sum + newWeights[vertex]);
        }
        // With no other weight there is no share to go by.
        if (sum == 0.0)
            continue;
        for (std::size_t row : others) {
            if (result[row].empty())
                result[row] = old[row];
            result[row][vertex] = old[row][vertex] - handed * (old[row][vertex] / sum);
        }
    }
    return result;
}
