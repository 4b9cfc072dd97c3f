// Copying weights, pasting them by nearest vertex, and handing an edit to its tool command.
#include "helperFunctions/helperFunctions.h"
#include "kernels/nearestMatch.h"
#include "morvaneContext/morvaneContext.h"
#include "morvaneToolCommand/morvaneToolCommand.h"
#include "report.h"
#include "weightModes/modeTable.h"

#include <algorithm>
#include <iostream>
#include <maya/MFnGeometryFilter.h>
#include <maya/MItGeometry.h>
#include <maya/MTypes.h>

namespace {

const char* const kUnreadPoint = "a point to match cannot be read";

/// The points of one item, before deformation: object-space positions and vertex indices, in component order.
struct RestPoints {
    std::vector<Position> positions;
    std::vector<int> ids;
};

/// The shape that goes into a deformer of the item; false when it does not deform the item's shape.
bool findInputShape(const MObject& deformer, const EditedObject& item, MDagPath& path)
{
    const MFnGeometryFilter filter(deformer);
    MStatus status;
    const unsigned int geometry = filter.indexForOutputShape(item.path.node(), &status);
    if (!status)
        return false;
    const MObject input = filter.inputShapeAtIndex(geometry, &status);
    return status && !input.isNull() && MDagPath::getAPathTo(input, path);
}

/// Reads them from the shape that goes into the active deformer, so that deformation does not disturb a
/// match. Where that one does not deform the item, its own skin does as well: the skin mode finds skins
/// object by object and never has people name one, so the active deformer is none, or one of an earlier mode.
/// False when neither deforms the item; `skinClusters` has an entry per item, or is empty in modes without
/// skins.
bool readRestPoints(const MObject& deformer, const KeptNodes& skinClusters, const EditedObject& item,
                    RestPoints& points)
{
    MDagPath path;
    const bool found = (!deformer.isNull() && findInputShape(deformer, item, path)) ||
                       findInputShape(liveNode(skinClusters, item.index), item, path);
    if (!found)
        return false;
    MStatus status;
    MObject component = item.component;
    MItGeometry iterator(path, component, &status);
    if (!status)
        return false;
    for (; !iterator.isDone(); iterator.next()) {
        const MPoint point = iterator.position(MSpace::kObject, &status);
        require(status, kUnreadPoint);
        points.positions.push_back({point.x, point.y, point.z});
        points.ids.push_back(iterator.index(&status));
        require(status, kUnreadPoint);
    }
    return true;
}

/// All copied items, ready to be searched.
class CopiedPoints {
public:
    /// Null when neither the deformer nor its own skin deforms one of them, which is said.
    static std::unique_ptr<CopiedPoints> read(const MObject& deformer, const CopyBuffer& copy)
    {
        const MSelectionList& copiedSel = copy.copiedSel;
        std::vector<std::vector<Position>> positions;
        std::vector<std::vector<int>> ids;
        for (unsigned int index = 0; index < copiedSel.length(); ++index) {
            EditedObject item;
            RestPoints points;
            if (liveNode(copy.copiedShapes, index).isNull() || !findEditedObject(copiedSel, index, item)) {
                refuseObject(item.path, "weights were copied from it, but it is no longer there; nothing was "
                                        "pasted.");
                return nullptr;
            }
            if (!readRestPoints(deformer, copy.copiedSkinClusters, item, points)) {
                refuseObject(item.path,
                             "weights were copied from it, but the deformer does not deform it; nothing "
                             "was pasted.");
                return nullptr;
            }
            positions.push_back(std::move(points.positions));
            ids.push_back(std::move(points.ids));
        }
        return std::unique_ptr<CopiedPoints>(new CopiedPoints(positions, std::move(ids)));
    }

    /// A target point with no copied point in reach takes position 0 and id 0 of the item that the target
    /// point before it matched (item 0 for the first one).
    PasteMatch match(const std::vector<Position>& targets) const
    {
        PasteMatch matches;
        int item = 0;
        for (const Position& target : targets) {
            const VertexMatch nearest = search.nearest(target);
            if (nearest.found)
                item = static_cast<int>(nearest.object);
            matches.objects.push_back(item);
            matches.positions.push_back(nearest.found ? static_cast<int>(nearest.position) : 0);
            matches.ids.push_back(nearest.found ? ids[nearest.object][nearest.position] : 0);
        }
        return matches;
    }

    const std::vector<int>& lastIds() const { return ids.back(); }

private:
    CopiedPoints(const std::vector<std::vector<Position>>& positions, std::vector<std::vector<int>> vertexIds)
        : search(positions), ids(std::move(vertexIds))
    {}

    NearestMatch search;
    std::vector<std::vector<int>> ids;
};

/// The analysis appends to the columns of the tool's own record and looks up the target anew. A copy needs
/// them for itself, and the edit that may be under way gets them back when this goes.
class KeptColumns {
public:
    explicit KeptColumns(EditRecord& editRecord)
        : record(editRecord), influences(record.skinInfluenceIds), layers(record.ngLayerIds),
          layerInfluences(record.ngInfluenceIds), allInfluences(record.allInfluenceLogicalIds),
          target(record.targetIndex), deformer(record.activeDeformer)
    {}
    ~KeptColumns()
    {
        record.allInfluenceLogicalIds.swap(allInfluences);
        record.targetIndex = target;
        insist([this] {
            record.skinInfluenceIds = influences;
            record.ngLayerIds = layers;
            record.ngInfluenceIds = layerInfluences;
            record.activeDeformer = deformer;
            return true;
        });
    }
    KeptColumns(const KeptColumns&) = delete;
    KeptColumns& operator=(const KeptColumns&) = delete;

private:
    EditRecord& record;
    MIntArray influences, layers, layerInfluences;
    std::vector<MIntArray> allInfluences;
    unsigned int target;
    MObjectHandle deformer;
};

} // namespace

MStatus morvaneContext::copyWeights()
{
    emptyCopyBuffer();
    try {
        if (fillCopyBuffer())
            return MS::kSuccess;
    } catch (...) {
        emptyCopyBuffer();
        throw;
    }
    std::cerr << std::endl;
    emptyCopyBuffer();
    return MS::kFailure;
}

MStatus morvaneContext::fillCopyBuffer()
{
    const KeptColumns kept(*this);
    clearColumns();
    resolveStoredDeformer();
    explaining.wrongComponents.clear();
    MObjectArray skins;
    getValidActiveSel(copiedSel, copiedSoftSelectWeights, skins);
    warnOfWrongComponents();
    std::vector<SkinRowsRef> rows;
    const MStatus status = getWeights(copiedSel, rows, copiedInfluenceWeights, copiedBlendWeights,
                                      copiedWeights, skins, copiedIndexArray, skinInfluenceIds,
                                      ngInfluenceIds, copiedNgWeights, copiedAllInfluenceNgWeights);
    if (!status)
        return status;
    copiedShapes = keepShapes(copiedSel);
    copiedSkinClusters = keep(skins);
    for (unsigned int skin = 0; skin < skins.length(); ++skin)
        copiedInfluenceNames.push_back(influenceNames(skins[skin]));
    for (const SkinRowsRef& item : rows)
        copiedSkinWeights.push_back(item->dense());
    copiedWeightMode = weightMode;
    weightsCopied = true;
    return MS::kSuccess;
}

void morvaneContext::emptyCopyBuffer()
{
    copiedSel.clear();
    copiedSoftSelectWeights.clear();
    copiedWeights.clear();
    copiedInfluenceWeights.clear();
    copiedSkinWeights.clear();
    copiedBlendWeights.clear();
    copiedSkinClusters.clear();
    copiedShapes.clear();
    copiedInfluenceNames.clear();
    copiedIndexArray.clear();
    copiedNgWeights.clear();
    copiedAllInfluenceNgWeights.clear();
}

MStatus morvaneContext::pasteWeights()
{
    if (copiedSel.isEmpty())
        return MS::kFailure;
    endStroke();
    validSel.clear();
    softSelectWeights.clear();
    validSkinClusters.clear();
    clearColumns();
    oldIndexArray.clear();
    liveObjects.clear();
    resolveStoredDeformer();
    explaining.wrongComponents.clear();
    getValidActiveSel(validSel, softSelectWeights, validSkinClusters);
    warnOfWrongComponents();
    keepObjects();
    // Without the old weights a paste could not be undone; the read has said why.
    if (validSel.isEmpty() || !getOldWeights())
        return MS::kFailure;
    morvaneToolCommand* command = makeToolCommand();
    if (command == nullptr)
        return MS::kFailure;
    passToToolCommand(command);
    command->setToolOperation(kPaste);
    command->describe(describeEdit("paste"));
    PasteRecord pasted;
    const PasteVerdict verdict = fillPasteArrays(pasted);
    const std::vector<bool>& refused = pasted.refusedObjects;
    const bool anyAccepted =
        verdict != PasteVerdict::kStop && std::find(refused.begin(), refused.end(), false) != refused.end();
    command->setPaste(std::move(pasted));
    // A write that cannot be done reports so; with nothing written there is nothing to undo.
    if (anyAccepted)
        command->redoIt();
    // What cannot be undone must not stay.
    const bool stays = anyAccepted && verdict == PasteVerdict::kAccepted && !command->wasTakenBack();
    if (stays && command->finalize())
        return MS::kSuccess;
    if (stays)
        command->undoIt();
    command->empty();
    return MS::kSuccess;
}

/// One entry per target object. Tells people when the copy does not go with the mode.
PasteVerdict morvaneContext::fillPasteArrays(PasteRecord& pasted)
{
    const unsigned int count = validSel.length();
    pasted.pasteWeights.resize(count);
    pasted.pasteNgAllInfluenceWeights.resize(count);
    pasted.pasteValues.resize(count);
    pasted.refusedObjects.assign(count, false);
    const WeightStore& store = modeRow(weightMode).store();
    const PasteVerdict verdict = store.acceptsCopy(copiedWeightMode);
    if (verdict == PasteVerdict::kLeaveAlone)
        pasted.refusedObjects.assign(count, true);
    const bool warns = verdict == PasteVerdict::kStop || verdict == PasteVerdict::kWarnGoOn;
    for (unsigned int index = 0; warns && index < count; ++index) {
        MGlobal::displayWarning("Weights were copied in an incompatible weight mode");
        if (verdict == PasteVerdict::kStop)
            return verdict;
    }
    if (verdict != PasteVerdict::kAccepted)
        return verdict;
    const std::unique_ptr<CopiedPoints> copied = CopiedPoints::read(liveDeformer(), *this);
    for (unsigned int index = 0; index < count; ++index) {
        EditedObject object;
        RestPoints points;
        pasted.refusedObjects[index] = true;
        if (!copied)
            continue;
        if (!findEditedObject(validSel, index, object) ||
            !readRestPoints(liveDeformer(), validHolders, object, points)) {
            refuseObject(object.path, kNotDeformed);
            continue;
        }
        const PasteMatch match = copied->match(points.positions);
        pasted.refusedObjects[index] = !store.fillPaste(
            {*this, *this, object, match, points.ids, copied->lastIds(), pastePerVertex}, pasted);
    }
    return verdict;
}

MStatus morvaneContext::passToToolCommand(morvaneToolCommand* command)
{
    modeRow(weightMode).store().completeRecord(*this);
    command->setToolOperation(kSculpt);
    command->setValidSel(validSel);
    command->setKeptNodes(validShapes, validHolders);
    command->setOldInfluenceWeights(oldInfluenceWeights);
    command->setOldBlendWeights(oldBlendWeights);
    command->setOldSkinRows(oldSkinRows);
    command->setOldSkinWeights(oldSkinWeights);
    command->setOldWeights(oldWeights);
    command->setWeightMode(weightMode);
    command->setClampedMin(clampedMin);
    command->setClampedMax(clampedMax);
    command->setWeightMin(weightMin);
    command->setWeightMax(weightMax);
    command->setDistributeWeightsNg(distributeWeightsNg);
    command->setActiveDeformer(activeDeformer.object());
    command->setWeightsPlug(weightsPlug);
    command->setWeightListAttr(weightListAttr);
    command->setTargetIndex(targetIndex);
    command->setSkinInfluenceIds(skinInfluenceIds);
    command->setValidSkinClusters(validSkinClusters);
    command->setSkinInfluence(liveInfluence());
    command->setSoftSelectWeights(softSelectWeights);
    command->setOffsetValue(offsetValue);
    command->setNgInfluenceIds(ngInfluenceIds);
    command->setNgLayerIds(ngLayerIds);
    command->setAllInfluenceLogicalIds(allInfluenceLogicalIds);
    command->setOldNgWeights(oldNgWeights);
    command->setOldAllInfluenceNgWeight(oldAllInfluenceNgWeight);
    return MS::kSuccess;
}
