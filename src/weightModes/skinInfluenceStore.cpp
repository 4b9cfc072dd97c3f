#include "weightModes/skinInfluenceStore.h"

#include "report.h"
#include "weightModes/influenceObstacle.h"
#include "weightModes/modeTable.h"
#include "weightModes/pointLive.h"
#include "weightModes/rowPaste.h"
#include "weightModes/skinRowsWriter.h"

#include <algorithm>
#include <maya/MDagPathArray.h>
#include <maya/MFnDependencyNode.h>

namespace {

/// Nudges one influence's weight of one point, normalised as a stroke would be, and puts back all influences.
class SkinProbe : public WeightProbe {
public:
    SkinProbe(const MObject& skinCluster, const ClickedPoint& point, unsigned int influence)
        : skin(skinCluster), path(point.path), component(point.component),
          edited(1, static_cast<int>(influence)), all(allPhysicalIndices(skin))
    {}

    MStatus readBefore()
    {
        unsigned int influenceCount = 0;
        MStatus status = skin.getWeights(path, component, before, influenceCount);
        if (status &&
            (before.length() != all.length() || static_cast<unsigned int>(edited[0]) >= before.length()))
            status = MS::kFailure;
        return status;
    }
    MStatus writeLow(double step) override { return write(weight() - step); }
    MStatus writeHigh(double step) override { return write(weight() + step); }
    // Not normalised: the row goes back as it was, whatever its sum.
    MStatus restore(double) override { return skin.setWeights(path, component, all, before, false); }

private:
    double weight() const { return before[static_cast<unsigned int>(edited[0])]; }
    MStatus write(double value)
    {
        MDoubleArray values(1, value);
        return skin.setWeights(path, component, edited, values, true);
    }

    MFnSkinCluster skin;
    MDagPath path;
    MObject component;
    MIntArray edited;
    MIntArray all;
    MDoubleArray before; ///< one per influence, physical order
};

/// Which influences of a skin are locked, by physical index. The influences are asked: reading the skin's own
/// elements would make them.
std::vector<bool> lockedInfluences(const MFnSkinCluster& skin)
{
    MDagPathArray influences;
    std::vector<bool> locked(skin.influenceObjects(influences));
    for (unsigned int influence = 0; influence < locked.size(); ++influence) {
        MStatus status;
        const MPlug lock =
            MFnDependencyNode(influences[influence].node()).findPlug("lockInfluenceWeights", false, &status);
        locked[influence] = status && lock.asBool();
    }
    return locked;
}

/// An event writes the edited influence alone: the others scale in proportion, so what the events before did
/// to them does not matter, but for two things. Where the edited weight left no room the others have become
/// 0, and are put back first. And each event rounds: the last one is written anew from the weights of the
/// press, so that a stroke depends on where the mouse is alone and a redo gives the same to the last bit.
class SkinLive : public DoubleLive {
public:
    SkinLive(const EditRecord& record, const EditedObject& object)
        : DoubleLive(record, object, record.oldInfluenceWeights[object.index]),
          skin(record.validSkinClusters[object.index]), influence(1, record.skinInfluenceIds[object.index]),
          rows(record.oldSkinRows[object.index])
    {
        std::vector<bool> kept = lockedInfluences(skin);
        if (static_cast<std::size_t>(influence[0]) < kept.size())
            kept[static_cast<std::size_t>(influence[0])] = false;
        if (std::find(kept.begin(), kept.end(), true) != kept.end())
            keptSums = rows->sums(kept);
    }

    MStatus write(double offset) override
    {
        // Before the values of the last event are gone.
        const bool anyFull = writes > 0 && markFull();
        MStatus status;
        if (anyFull)
            status = pressRows().writeMarked(full);
        ++writes;
        return status ? DoubleLive::write(offset) : apiError(status, kContextSource, __LINE__);
    }
    MStatus settle() override
    {
        // The first event found the rows as they were at the press.
        if (writes < 2)
            return MS::kSuccess;
        MStatus status = pressRows().writeAll();
        status = status ? writeValues() : apiError(status, kContextSource, __LINE__);
        if (status)
            writes = 1;
        return status;
    }

protected:
    MStatus writeValues() override
    {
        const MStatus status = skin.setWeights(path, component, influence, values, true);
        return status ? status : apiError(status, kContextSource, __LINE__);
    }
    MStatus writeOldValues() override
    {
        writes = 0;
        return pressRows().writeAll();
    }

private:
    /// Marks the points whose last weight left no room worth the name; whether there are any.
    bool markFull()
    {
        constexpr double kRoom = 1e-9;
        const std::size_t count = values.length();
        const double* const weights = dataOf(values);
        full.resize(count);
        char any = 0;
        for (std::size_t point = 0; point < count; ++point) {
            const double kept = keptSums.empty() ? 0.0 : keptSums[point];
            full[point] = static_cast<char>(weights[point] + kept > 1.0 - kRoom);
            any = static_cast<char>(any | full[point]);
        }
        return any != 0;
    }
    SkinRowsWriter& pressRows()
    {
        if (!writer)
            writer = std::make_unique<SkinRowsWriter>(rows, skin.object(), path, component,
                                                      static_cast<unsigned int>(influence[0]));
        return *writer;
    }

    MFnSkinCluster skin;
    MIntArray influence;
    SkinRowsRef rows;
    std::vector<double> keptSums; ///< per point, of the locked influences; empty when there are none
    std::vector<char> full;       ///< per point
    std::unique_ptr<SkinRowsWriter> writer;
    unsigned int writes = 0; ///< since the rows were those of the press
};

bool hasColumns(const EditRecord& record, const EditedObject& object)
{
    const unsigned int index = object.index;
    const bool has = index < record.validSkinClusters.length() && index < record.skinInfluenceIds.length() &&
                     index < record.oldSkinRows.size();
    if (!has)
        refuseObject(object.path, kUnequalArrays);
    return has && fitsFalloff(record, object, record.oldSkinRows[index]->pointCount());
}

/// Puts back the influences of the points, so that what normalisation did to the others is undone too.
/// `edited`: the only one that a point may have got since, or kEveryInfluence.
void restoreRows(const EditRecord& record, const EditedObject& object, unsigned int edited)
{
    if (object.index < record.validSkinClusters.length() && object.index < record.oldSkinRows.size())
        SkinRowsWriter(record.oldSkinRows[object.index], record.validSkinClusters[object.index], object.path,
                       object.component, edited)
            .writeAll();
}

} // namespace

Resolution SkinInfluenceStore::resolve(const TargetInput& input) const
{
    if (input.record.liveInfluence().length() == 0)
        return {MString(kNoInfluence)};
    return SelectionRule::kSkinned;
}

MString SkinInfluenceStore::addSkinColumns(const TargetInput& input, const MDagPath&,
                                           MObject& skinCluster) const
{
    EditRecord& record = input.record;
    const unsigned int influence = getPhysicalIndex(skinCluster, record.liveInfluence());
    if (influence == kNotFound)
        return notAnInfluence(input.names.skinInfluenceStr, skinCluster);
    record.skinInfluenceIds.append(static_cast<int>(influence));
    return MString();
}

MString SkinInfluenceStore::obstacle(const EditRecord& record, const ClickedPoint& point, const MString& name,
                                     bool moves) const
{
    return influenceObstacle(record.liveInfluence(), point, name, moves);
}

MStatus SkinInfluenceStore::read(const WeightReading& reading) const
{
    const unsigned int count = reading.selection.length();
    reading.skinRows.resize(count);
    reading.influenceWeights.resize(count);
    for (unsigned int index = 0; index < count; ++index) {
        EditedObject object;
        findEditedObject(reading.selection, index, object);
        if (index >= reading.skinClusters.length() || index >= reading.influenceIds.length()) {
            refuseObject(object.path, kUnequalArrays);
            return MS::kFailure;
        }
        const MFnSkinCluster skin(reading.skinClusters[index]);
        MStatus status;
        const SkinRowsRef rows = SkinRows::read(skin, object.path, object.component, status);
        if (!status) {
            reading.failure.text = unreadable(object.path);
            return apiError(status, kContextSource, 1515);
        }
        reading.influenceCounts.append(static_cast<int>(rows->influenceCount()));
        if (static_cast<unsigned int>(reading.influenceIds[index]) >= rows->influenceCount()) {
            reading.failure.text = unreadable(object.path);
            return apiError(MS::kInvalidParameter, kContextSource, 1527);
        }
        reading.influenceWeights[index] =
            rows->influence(static_cast<unsigned int>(reading.influenceIds[index]));
        reading.skinRows[index] = rows;
    }
    return MS::kSuccess;
}

std::unique_ptr<WeightProbe> SkinInfluenceStore::openProbe(const EditRecord& record,
                                                           const ClickedPoint& point, MStatus& status) const
{
    MDagPath shape = point.path;
    MObject skinCluster = getSkinCluster(shape, status);
    if (!status) {
        apiError(status, kContextSource, __LINE__);
        return nullptr;
    }
    MFnSkinCluster(skinCluster).indexForInfluenceObject(record.liveInfluence(), &status);
    if (!status) {
        apiError(status, kContextSource, __LINE__);
        return nullptr;
    }
    // The weights are addressed by position in the influence list, which differs from the logical index once
    // an influence has been removed.
    auto probe = std::make_unique<SkinProbe>(skinCluster, point,
                                             getPhysicalIndex(skinCluster, record.liveInfluence()));
    status = probe->readBefore();
    if (!status) {
        apiError(status, kContextSource, __LINE__);
        return nullptr;
    }
    return probe;
}

std::unique_ptr<LiveObject> SkinInfluenceStore::openLive(const EditRecord& record,
                                                         const EditedObject& object) const
{
    if (!hasColumns(record, object))
        return nullptr;
    return std::make_unique<SkinLive>(record, object);
}

MStatus SkinInfluenceStore::redoStroke(const EditRecord& record, const EditedObject& object) const
{
    if (!hasColumns(record, object))
        return MS::kSuccess;
    const unsigned int index = object.index;
    const auto edited = static_cast<unsigned int>(record.skinInfluenceIds[index]);
    MDoubleArray values =
        redoneWeights<MDoubleArray, double>(record, index, record.oldSkinRows[index]->influence(edited));
    MFnSkinCluster skin(record.validSkinClusters[index]);
    MIntArray influence(1, record.skinInfluenceIds[index]);
    const MStatus status = skin.setWeights(object.path, object.component, influence, values, true);
    return status ? status : apiError(status, kToolCommandSource, __LINE__);
}

MStatus SkinInfluenceStore::paste(const EditRecord& record, const PasteRecord& pasted,
                                  const EditedObject& object) const
{
    if (object.index >= record.validSkinClusters.length())
        return MS::kSuccess;
    MFnSkinCluster skin(record.validSkinClusters[object.index]);
    MIntArray influences = allPhysicalIndices(skin);
    MDoubleArray rows(pasted.pasteValues[object.index]);
    if (rows.length() != 0) {
        // Whole rows as they were copied: normalising them would only round them.
        const MStatus written = skin.setWeights(object.path, object.component, influences, rows, false);
        return written ? written : apiError(written, kToolCommandSource, __LINE__);
    }
    MFloatArray values(pasted.pasteWeights[object.index]);
    // An array without values fits no component, whatever the platform makes of it.
    const MStatus status = values.length() == 0
                               ? MStatus(MS::kInvalidParameter)
                               : skin.setWeights(object.path, object.component, influences, values, true);
    return status ? status : apiError(status, kToolCommandSource, __LINE__);
}

void SkinInfluenceStore::undoStroke(const EditRecord& record, const EditedObject& object) const
{
    if (object.index < record.skinInfluenceIds.length())
        restoreRows(record, object, static_cast<unsigned int>(record.skinInfluenceIds[object.index]));
}

void SkinInfluenceStore::undoPaste(const EditRecord& record, const EditedObject& object) const
{
    restoreRows(record, object, SkinRowsWriter::kEveryInfluence);
}

PasteVerdict SkinInfluenceStore::acceptsCopy(WeightMode copiedMode) const
{
    const bool isSkin = modeRow(copiedMode).family == StorageFamily::kSkinInfluence;
    return isSkin ? PasteVerdict::kAccepted : PasteVerdict::kWarnGoOn;
}

/// One row for every target point, taken value by value from the matches of the first target points:
/// influence j comes from the copied point that target point j matched, so all rows are alike. Scenes were
/// built on it.
bool SkinInfluenceStore::fillPaste(const PasteJob& job, PasteRecord& pasted) const
{
    if (job.perVertex)
        return fillSkinRows(job, pasted);
    const CopyBuffer& copied = job.copied;
    const unsigned int target = job.object.index;
    const std::size_t points = job.match.objects.size();
    if (target >= copied.copiedIndexArray.length()) {
        refuseObject(job.object.path,
                     "more objects are selected than were copied; nothing was written for it.");
        return false;
    }
    const auto influences = static_cast<std::size_t>(copied.copiedIndexArray[target]);
    // Rows of another length would be written across the influences, where they happen to fit at all.
    if (target >= job.target.validSkinClusters.length() ||
        allPhysicalIndices(MFnSkinCluster(job.target.validSkinClusters[target])).length() != influences) {
        refuseObject(job.object.path,
                     "its skin has another number of influences than was copied; nothing was "
                     "written for it.");
        return false;
    }
    if (points < influences) {
        refuseObject(job.object.path,
                     "it has fewer selected points than influences were copied; nothing was written for it.");
        return false;
    }
    std::vector<float> row(influences);
    for (std::size_t influence = 0; influence < influences; ++influence) {
        const auto item = static_cast<std::size_t>(job.match.objects[influence]);
        const std::size_t value =
            static_cast<std::size_t>(job.match.positions[influence]) * influences + influence;
        if (item >= copied.copiedSkinWeights.size() || value >= copied.copiedSkinWeights[item].length()) {
            refuseObject(job.object.path, kCopyTooShort);
            return false;
        }
        row[influence] = static_cast<float>(copied.copiedSkinWeights[item][static_cast<unsigned int>(value)]);
    }
    std::vector<float> rows;
    rows.reserve(points * influences);
    for (std::size_t point = 0; point < points; ++point)
        rows.insert(rows.end(), row.begin(), row.end());
    pasted.pasteWeights[target] = MFloatArray(rows.data(), static_cast<unsigned int>(rows.size()));
    return true;
}

std::vector<double> SkinInfluenceStore::copiedValues(const CopyBuffer& copied, std::size_t item) const
{
    const std::vector<MDoubleArray>& weights = copied.copiedInfluenceWeights;
    return item < weights.size() ? toVector(weights[item]) : std::vector<double>();
}
