#include "weightModes/weightStore.h"

#include "helperFunctions/helperFunctions.h"
#include "report.h"
#include "weightModes/modeTable.h"

bool findEditedObject(const MSelectionList& selection, unsigned int index, EditedObject& object)
{
    object.index = index;
    return selection.getDagPath(index, object.path, object.component) == MS::kSuccess;
}

MString unreadable(const MDagPath& path)
{
    return "The weights of " + shapeName(path) + " cannot be read.";
}

MString notAnInfluence(const MString& influence, const MObject& skinCluster)
{
    return influence + " is not an influence of " + nodeName(skinCluster) + ".";
}

MString WeightStore::addSkinColumns(const TargetInput&, const MDagPath&, MObject&) const
{
    return MString();
}

MString WeightStore::obstacle(const EditRecord&, const ClickedPoint&, const MString&, bool) const
{
    return MString();
}

void WeightStore::completeRecord(EditRecord&) const {}

PasteVerdict WeightStore::acceptsCopy(WeightMode copiedMode) const
{
    return modeRow(copiedMode).isLayerMode ? PasteVerdict::kStop : PasteVerdict::kAccepted;
}

std::vector<double> WeightStore::copiedValues(const CopyBuffer&, std::size_t) const
{
    return {};
}

bool WeightStore::fillPaste(const PasteJob& job, PasteRecord& pasted) const
{
    const WeightStore& source = modeRow(job.copied.copiedWeightMode).store();
    std::vector<std::vector<double>> items(job.copied.copiedSel.length());
    for (std::size_t item = 0; item < items.size(); ++item)
        items[item] = source.copiedValues(job.copied, item);
    const std::size_t count = job.match.objects.size();
    std::vector<double> values(count);
    for (std::size_t point = 0; point < count; ++point) {
        const auto item = static_cast<std::size_t>(job.match.objects[point]);
        const auto position = static_cast<std::size_t>(job.match.positions[point]);
        if (item >= items.size() || position >= items[item].size()) {
            refuseObject(job.object.path, kCopyTooShort);
            return false;
        }
        values[point] = items[item][position];
    }
    const MDoubleArray exact(values.data(), static_cast<unsigned int>(count));
    pasted.pasteWeights[job.object.index] = doubleToFloat(exact);
    if (job.perVertex)
        pasted.pasteValues[job.object.index] = exact;
    return true;
}
