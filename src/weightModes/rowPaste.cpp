#include "weightModes/rowPaste.h"

#include "helperFunctions/helperFunctions.h"
#include "report.h"

#include <algorithm>

namespace {

/// Rows of weights on their way from all copied objects to one target object, by influence.
class RowPaste {
public:
    RowPaste(const CopyBuffer& copied, const MObject& targetSkin);

    /// Influences of a copied object; 0 when it is none.
    std::size_t sourceCount(std::size_t item) const;
    std::size_t targetCount() const { return target.count(); }
    /// Replaces a row of the target by one of a copied object. A row of which nothing can be carried over
    /// leaves the target's as it is.
    void carryOver(std::size_t item, const double* source, double* row);
    /// Whether anything was carried over. Tells people when not, and what the target's skin lacks otherwise.
    bool finish(const MDagPath& path) const;

private:
    void noteLacking(std::size_t item, const double* source);

    const CopyBuffer& copied;
    InfluenceNames target;
    std::vector<InfluenceMatch> matches;  ///< per copied object
    std::vector<std::string> lackedNames; ///< each once, in the order of their first use
    bool anyCarried = false;
};

RowPaste::RowPaste(const CopyBuffer& copyBuffer, const MObject& targetSkin)
    : copied(copyBuffer), target(influenceNames(targetSkin))
{
    for (const InfluenceNames& names : copied.copiedInfluenceNames)
        matches.emplace_back(names, target);
}

std::size_t RowPaste::sourceCount(std::size_t item) const
{
    return item < matches.size() ? matches[item].sourceCount() : 0;
}

void RowPaste::carryOver(std::size_t item, const double* source, double* row)
{
    if (matches[item].carryOver(source, row))
        anyCarried = true;
    noteLacking(item, source);
}

void RowPaste::noteLacking(std::size_t item, const double* source)
{
    for (std::size_t influence = 0; influence < sourceCount(item); ++influence) {
        if (!matches[item].isLost(influence, source))
            continue;
        const std::string name = copied.copiedInfluenceNames[item].name(influence);
        if (std::find(lackedNames.begin(), lackedNames.end(), name) == lackedNames.end())
            lackedNames.push_back(name);
    }
}

bool RowPaste::finish(const MDagPath& path) const
{
    if (!anyCarried) {
        refuseObject(path,
                     "its skin has none of the influences that were copied; nothing was written for it.");
        return false;
    }
    std::string names;
    for (const std::string& name : lackedNames)
        names += (names.empty() ? "" : ", ") + name;
    if (!names.empty())
        refuseObject(path,
                     ("its skin lacks " + names + "; what was copied of that goes to the others.").c_str());
    return true;
}

/// One vertex's weights of all influences; false when one of them does not reach so far.
bool gather(const std::vector<MDoubleArray>& influences, unsigned int vertex, std::vector<double>& row)
{
    row.clear();
    for (const MDoubleArray& weights : influences) {
        if (vertex >= weights.length())
            return false;
        row.push_back(weights[vertex]);
    }
    return true;
}

} // namespace

bool fillSkinRows(const PasteJob& job, PasteRecord& pasted)
{
    const unsigned int target = job.object.index;
    if (target >= job.target.validSkinClusters.length() || target >= job.target.oldSkinRows.size()) {
        refuseObject(job.object.path, kUnequalArrays);
        return false;
    }
    RowPaste rows(job.copied, job.target.validSkinClusters[target]);
    std::vector<std::vector<double>> sources;
    for (const MDoubleArray& weights : job.copied.copiedSkinWeights)
        sources.push_back(toVector(weights));
    MDoubleArray values(job.target.oldSkinRows[target]->dense());
    const std::size_t points = job.match.objects.size();
    bool reaches = values.length() == points * rows.targetCount();
    for (std::size_t point = 0; reaches && point < points; ++point) {
        const auto item = static_cast<std::size_t>(job.match.objects[point]);
        const std::size_t count = rows.sourceCount(item);
        const std::size_t from = static_cast<std::size_t>(job.match.positions[point]) * count;
        reaches = count != 0 && item < sources.size() && from + count <= sources[item].size();
        if (reaches)
            rows.carryOver(item, sources[item].data() + from, dataOf(values) + point * rows.targetCount());
    }
    if (!reaches)
        refuseObject(job.object.path, kCopyTooShort);
    if (!reaches || !rows.finish(job.object.path))
        return false;
    pasted.pasteValues[target] = values;
    return true;
}

bool fillLayerRows(const PasteJob& job, PasteRecord& pasted)
{
    const unsigned int target = job.object.index;
    std::vector<MDoubleArray> weights = job.target.oldAllInfluenceNgWeight[target];
    RowPaste rows(job.copied, job.target.validSkinClusters[target]);
    const auto& copied = job.copied.copiedAllInfluenceNgWeights;
    bool reaches = rows.targetCount() == weights.size();
    for (std::size_t point = 0; reaches && point < job.match.objects.size(); ++point) {
        const auto item = static_cast<std::size_t>(job.match.objects[point]);
        const auto vertex = static_cast<unsigned int>(job.targetIds[point]);
        std::vector<double> source, row;
        reaches = item < copied.size() && rows.sourceCount(item) == copied[item].size() &&
                  gather(copied[item], static_cast<unsigned int>(job.match.ids[point]), source) &&
                  gather(weights, vertex, row);
        if (!reaches)
            break;
        rows.carryOver(item, source.data(), row.data());
        for (std::size_t influence = 0; influence < row.size(); ++influence)
            weights[influence][vertex] = row[influence];
    }
    if (!reaches)
        refuseObject(job.object.path, kCopyTooShort);
    if (!reaches || !rows.finish(job.object.path))
        return false;
    pasted.pasteNgAllInfluenceWeights[target] = weights;
    return true;
}
