// The live stroke: every drag event writes all weights anew from those of the press.
#include "helperFunctions/helperFunctions.h"
#include "kernels/labelText.h"
#include "morvaneContext/morvaneContext.h"
#include "report.h"
#include "weightModes/modeTable.h"

#include <algorithm>
#include <maya/MColor.h>
#include <maya/MItGeometry.h>
#include <maya/MMatrix.h>
#include <maya/MPointArray.h>
#include <maya/MTypes.h>

namespace {

/// Labels of one object: positions and texts, one each per point in component order.
struct Labels {
    MPointArray positions;
    std::vector<MString> texts;
};

/// Label positions are the world positions multiplied once more by the object's matrix; labels have always
/// stood there, and on objects at the origin it is the same place.
MStatus collectLabels(const EditedObject& object, const std::vector<double>& weights, int precision,
                      Labels& labels)
{
    MStatus status;
    MObject component = object.component;
    MItGeometry iterator(object.path, component, &status);
    if (!status)
        return status;
    const MMatrix matrix = object.path.inclusiveMatrix();
    labels.texts.reserve(weights.size());
    char text[kLabelCapacity];
    for (std::size_t point = 0; point < weights.size() && !iterator.isDone(); ++point, iterator.next()) {
        labels.positions.append(iterator.position(MSpace::kWorld) * matrix);
        const std::size_t length = writeLabel(weights[point], precision, text);
        labels.texts.emplace_back(text, static_cast<int>(length));
    }
    return MS::kSuccess;
}

void drawLabels(MHWRender::MUIDrawManager& drawManager, const std::vector<Labels>& objects,
                const MColor& color, unsigned int fontSize)
{
    drawManager.beginDrawable(MHWRender::MUIDrawManager::kAutomatic, 0);
    drawManager.setColor(color);
    drawManager.setFontSize(fontSize);
    for (const Labels& labels : objects) {
        for (unsigned int label = 0; label < labels.positions.length(); ++label)
            drawManager.text(labels.positions[label], labels.texts[label], MHWRender::MUIDrawManager::kLeft);
    }
    drawManager.endDrawable();
}

} // namespace

/// Makes everything that drag events need of each object of the selection.
void morvaneContext::prepareStroke()
{
    liveObjects.clear();
    const WeightStore& store = modeRow(weightMode).store();
    for (unsigned int index = 0; index < validSel.length(); ++index) {
        EditedObject object;
        if (findEditedObject(validSel, index, object))
            liveObjects.push_back(store.openLive(*this, object));
        else
            liveObjects.push_back(nullptr);
    }
    const bool anyLive = std::any_of(liveObjects.begin(), liveObjects.end(),
                                     [](const std::unique_ptr<LiveObject>& live) { return live != nullptr; });
    if (!anyLive)
        putIntoHelpLine("Nothing can be sculpted here: the warning says why.");
}

/// A stroke that ends where it began is not recorded, so it must leave the weights of the press, even those
/// that the clamps would have changed.
void morvaneContext::restorePressWeights()
{
    for (const std::unique_ptr<LiveObject>& live : liveObjects) {
        if (live != nullptr)
            insist([&live] { return live->restore(); });
    }
}

/// What has been deleted since the press must not be touched, not even to name it.
void morvaneContext::dropLostObjects()
{
    bool lost = false;
    for (unsigned int index = 0; index < liveObjects.size(); ++index) {
        if (liveObjects[index] == nullptr || isThere(index))
            continue;
        liveObjects[index].reset();
        lost = true;
    }
    if (lost)
        MGlobal::displayWarning("What is being sculpted is no longer there; nothing more is written for it.");
}

/// A failed write has been reported; what else is recorded stays right.
void morvaneContext::settleStroke()
{
    for (const std::unique_ptr<LiveObject>& live : liveObjects) {
        if (live != nullptr)
            insist([&live] { return live->settle(); });
    }
}

void morvaneContext::sayThatWriteFailed(unsigned int index)
{
    EditedObject object;
    findEditedObject(validSel, index, object);
    explaining.pending =
        "The weights of " + shapeName(object.path) + " cannot be changed: they are locked or connected.";
    sayWhy();
}

MStatus morvaneContext::doDragSculpt(MEvent&, MHWRender::MUIDrawManager& drawManager,
                                     const MHWRender::MFrameContext&)
{
    if ((dragPoint - pressPoint).length() >= kNoLength)
        sayWhy();
    if (validSel.isEmpty())
        return MS::kSuccess;
    dropLostObjects();
    MStatus status = getDirectionScalar();
    // Back at the press point there is no motion either; what the stroke wrote before is then taken back.
    if (!status && !strokeWritten) {
        if (explaining.reported)
            return status;
        explaining.reported = true;
        return apiError(status, kContextSource, __LINE__);
    }
    std::vector<Labels> labels(displayWeights ? liveObjects.size() : 0);
    std::vector<double> weights;
    bool anyWritten = false;
    for (unsigned int index = 0; index < liveObjects.size(); ++index) {
        LiveObject* live = liveObjects[index].get();
        if (live == nullptr)
            continue;
        if (displayWeights) {
            EditedObject object;
            findEditedObject(validSel, index, object);
            weights.resize(live->pointCount());
            live->newWeights(offsetValue, weights.data());
            status = collectLabels(object, weights, displayPrecision, labels[index]);
            if (!status)
                return apiError(status, kContextSource, __LINE__);
        }
        // Said beforehand: a write that fails half-way has changed weights too, which must be taken back.
        strokeWritten = true;
        anyWritten = true;
        status = live->write(offsetValue);
        if (!status) {
            sayThatWriteFailed(index);
            return status;
        }
    }
    // A stroke whose objects were all refused has changed nothing and must not be recorded.
    if (!anyWritten)
        offsetValue = 0.0;
    if (displayWeights)
        drawLabels(drawManager, labels, MColor(fontColorR, fontColorG, fontColorB, fontOpacity),
                   static_cast<unsigned int>(fontSize));
    return MS::kSuccess;
}
