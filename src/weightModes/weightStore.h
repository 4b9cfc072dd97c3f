#pragma once

#include "weightModes/editRecord.h"
#include "weightModes/targetNames.h"

#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <memory>

/// Which analysis turns a selection into the edited objects.
enum class SelectionRule {
    kNothing, ///< the mode cannot edit now
    kMembers, ///< points that the active deformer deforms
    kSkinned  ///< all selected points of objects with a skin
};

/// Why an edit cannot be, for people; empty when it can.
struct Reason {
    MString text;
    bool always = false; ///< a copy and a paste say it too, not only a press
};

/// What a mode finds in the scene before a selection is looked at.
struct Resolution {
    Resolution(SelectionRule found) : rule(found) {}
    Resolution(const MString& text, bool always = false) : reason{text, always} {}

    SelectionRule rule = SelectionRule::kNothing;
    Reason reason;        ///< of kNothing
    int targetIndex = -1; ///< of the blend shape target, where the mode has one
};

/// What the stores may know of the tool when they look at the scene.
struct TargetInput {
    EditRecord& record; ///< the deformer is resolved
    bool ngEnabled;     ///< ngSkinTools2 was there when it was last looked for
    TargetNames names;
};

/// One item of the edited selection.
struct EditedObject {
    unsigned int index = 0;
    MDagPath path;
    MObject component;
};

/// Item `index` of the selection; false when it has no path any more.
bool findEditedObject(const MSelectionList& selection, unsigned int index, EditedObject& object);

/// Says that the weights of a shape cannot be read.
MString unreadable(const MDagPath& path);

/// Says that a skin lacks the influence.
MString notAnInfluence(const MString& influence, const MObject& skinCluster);

/// Where a read takes from and puts to; see getWeights of the context. Stores are resized, entry n replaced.
struct WeightReading {
    const EditRecord& record; ///< mode, deformer, plug, target and layer ids
    bool ngEnabled;
    const MSelectionList& selection;
    const MObjectArray& skinClusters;
    const MIntArray& influenceIds; ///< physical
    std::vector<SkinRowsRef>& skinRows;
    std::vector<MDoubleArray>& influenceWeights;
    std::vector<MDoubleArray>& blendWeights;
    std::vector<MFloatArray>& weights;
    MIntArray& influenceCounts; ///< appended, one per object
    std::vector<MDoubleArray>& ngWeights;
    std::vector<std::vector<MDoubleArray>>& allInfluenceNgWeights;
    Reason& failure; ///< filled when the read fails and nobody has been told why
};

/// The clicked point whose weight is nudged to see where it moves.
struct ClickedPoint {
    MDagPath path;
    MObject component; ///< holds this one point
    int vertex;        ///< its index in the shape, as the geometry iterator tells it
};

/// Nudges one point's weight. Owned by one press; restore() is called in the end, whatever failed before it,
/// and again if it fails.
class WeightProbe {
public:
    virtual ~WeightProbe() = default;
    /// The weight before the probe less `step`.
    virtual MStatus writeLow(double step) = 0;
    /// Above the weight before the probe by `step`.
    virtual MStatus writeHigh(double step) = 0;
    virtual MStatus restore(double step) = 0;
};

/// One object of a stroke, prepared at press: everything that a drag event needs, with nothing left to look
/// up.
class LiveObject {
public:
    virtual ~LiveObject() = default;
    /// Points of the component.
    virtual std::size_t pointCount() const = 0;
    /// The new weights at an offset, clamped as the live stroke does, one per point in component order.
    virtual void newWeights(double offset, double* values) const = 0;
    /// Writes them into the scene; a failure is reported here and returned.
    virtual MStatus write(double offset) = 0;
    /// Puts back what was stored at the press, without clamping or normalising it: as much of it as can be
    /// written. Tells whether that was all.
    virtual MStatus restore() = 0;
    /// At the end of a stroke: leaves the weights that a redo gives, to the last bit, whatever drags there
    /// were on the way.
    virtual MStatus settle() { return MS::kSuccess; }
};

/// Whether a copy goes with the mode it is pasted in.
enum class PasteVerdict {
    kAccepted,
    kStop,      ///< the whole paste stops with a warning
    kWarnGoOn,  ///< a warning for each object, whose paste array stays empty; its write then fails
    kLeaveAlone ///< nothing is written, without a word
};

/// For each point of a target object, in component order, the copied point it takes its weight from.
struct PasteMatch {
    std::vector<int> objects;   ///< item of the copied selection
    std::vector<int> positions; ///< position in that item's component
    std::vector<int> ids;       ///< that point's vertex index
};

struct PasteJob {
    const CopyBuffer& copied;
    const EditRecord& target; ///< with the old weights read
    const EditedObject& object;
    const PasteMatch& match;
    const std::vector<int>& targetIds;     ///< vertex indices of the target's component
    const std::vector<int>& lastCopiedIds; ///< vertex indices of the last copied item's component
    bool perVertex;                        ///< every target point gets just what its match had
};

/// Where the weights of one family of modes live. One constant object per mode, in the mode table; no state.
/// `object` is always an item of the record's `validSel`.
class WeightStore {
public:
    virtual ~WeightStore() = default;

    /// Whether the scene allows editing in this mode, and why not.
    virtual Resolution resolve(const TargetInput& input) const = 0;
    /// For a selected object with a skin: appends the columns that this mode needs. A text skips the object
    /// and says why.
    virtual MString addSkinColumns(const TargetInput& input, const MDagPath& path,
                                   MObject& skinCluster) const;
    /// What keeps the weight of a point from being sculpted as people mean it; empty when nothing does, or
    /// only the pose. `name` is the point's, `moves` whether it moved when the weight was nudged.
    virtual MString obstacle(const EditRecord& record, const ClickedPoint& point, const MString& name,
                             bool moves) const;
    /// Reads the weights of every object; stops at the first failure, which is reported.
    virtual MStatus read(const WeightReading& reading) const = 0;
    /// Null with a failed status when the point has no weight to nudge.
    virtual std::unique_ptr<WeightProbe> openProbe(const EditRecord& record, const ClickedPoint& point,
                                                   MStatus& status) const = 0;
    /// Null when the object is refused, which has been said.
    virtual std::unique_ptr<LiveObject> openLive(const EditRecord& record,
                                                 const EditedObject& object) const = 0;
    /// Copies into the record what undo wants from elsewhere in it.
    virtual void completeRecord(EditRecord& record) const;

    // The tool command. A redo and a paste report failures where their contract says so and return them; a
    // restore goes on whatever happens.
    virtual MStatus redoStroke(const EditRecord& record, const EditedObject& object) const = 0;
    virtual MStatus paste(const EditRecord& record, const PasteRecord& pasted,
                          const EditedObject& object) const = 0;
    virtual void undoStroke(const EditRecord& record, const EditedObject& object) const = 0;
    virtual void undoPaste(const EditRecord& record, const EditedObject& object) const = 0;

    /// Whether a copy made in that mode can be pasted in this one. The five modes that hold one plain number
    /// per point take one another's copies and those of skin weights; so they do unless a store says
    /// otherwise.
    virtual PasteVerdict acceptsCopy(WeightMode copiedMode) const;
    /// Fills the paste arrays of one target object from an accepted copy; false when the object is refused,
    /// which has been said. The default is that of the plain modes.
    virtual bool fillPaste(const PasteJob& job, PasteRecord& pasted) const;
    /// What a copy made in this mode gives to the plain modes: one value per copied point of an item.
    virtual std::vector<double> copiedValues(const CopyBuffer& copied, std::size_t item) const;
};
