#pragma once

#include "support/weightModel.h"

#include <vector>

namespace testing_support {

/// The tool as plain arrays: what presses, drags, copies, pastes, selections, undos and redos do to the
/// weights, the selection and the undo queue. It asks nobody: what the platform decides (what is picked,
/// where the mouse leads, where points are displayed) is told to it.
class ToolModel {
public:
    ToolModel() : reach({}) {}

    WeightModel scene;
    ReachModel reach;
    Settings settings;
    Selection selection;
    /// How often something happened that undo does not take back to the last bit: a probe that cost a
    /// rounding, layers laid over skins anew, and strokes on layers.
    int leftovers = 0;

    /// The selection with its falloffs and its mirrored part, as the platform tells it now.
    RichPieces rich() const { return hasOverride ? overridden : reach.reach(selection); }
    /// What the tool edits when asked now.
    Pieces edited() const;
    void setMode(Mode mode);
    /// The deformer is looked up at once, except in the modes that find their data object by object.
    void setDeformer(const std::string& name);

    /// What a press on a point and nothing else would edit.
    EditModel editOf(const Spot& spot) const;
    /// A press with the left button on what lies under it, at most one point; `highlighted`: as the highlight
    /// tells it. Whether it sculpts.
    bool press(const Selection& pick, bool shift, bool control, bool highlighted);
    /// What that press found to edit, and whether it nudges the weight of the clicked point.
    const EditModel& pressedEdit() const { return command.edit; }
    bool probes() const { return probing; }
    /// Ends a sculpting press at this offset; `moved`: some drag event before wrote weights.
    void releaseStroke(double offset, bool moved);
    /// Ends another press: a click, or a marquee around `inside`.
    void releaseClick();
    void releaseMarquee(const Selection& inside);

    void selectByScript(const Selection& after);
    void setReach(const ReachOptions& options);
    void copy();
    void paste();
    void dump();

    void undo();
    void redo();
    /// Whether the entry that redo would take again gives what it gave at first, to the last bit.
    bool redoesAlike() const;
    std::size_t undoCount() const { return done; }
    std::size_t redoCount() const { return entries.size() - done; }

private:
    struct SelectionSnapshot {
        Selection list;
        RichPieces overridden;
        bool hasOverride = false;
    };
    /// One thing that an entry of the undo queue takes back.
    struct Step {
        enum Kind { kScript, kReach, kTool } kind = kTool;
        SelectionSnapshot before, after; ///< scripts
        ReachOptions reachBefore, reachAfter;
        // The tool's own commands: a selection change, a stroke or a paste.
        bool selects = false, strokes = false, pastes = false;
        Selection oldList, newList;
        RichPieces oldRich, newRich;
        EditModel edit;
    };
    using Entry = std::vector<Step>;

    void setActive(Selection list);
    void setRich(RichPieces rich);
    SelectionSnapshot snapshot() const { return {selection, overridden, hasOverride}; }
    void restore(const SelectionSnapshot& earlier);
    static Selection combined(Selection list, const Selection& change, bool shift, bool control);
    /// Empty when it changes nothing.
    Entry symmetrize();
    void push(Entry entry);
    void recordSelection();
    bool namesDeformer() const;
    EditModel newEdit() const;

    std::vector<Entry> entries;
    std::size_t done = 0;
    RichPieces overridden;
    bool hasOverride = false;
    int active = -1; ///< the resolved deformer
    CopyModel copied;

    // The press under way.
    Selection picked;
    bool shiftHeld = false, controlHeld = false, selectionChanged = false;
    Spot pressed;
    Step command;
    bool probing = false, probeCosts = false;
};

} // namespace testing_support
