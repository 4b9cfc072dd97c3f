#pragma once

#include "selection/selectionList.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace host {

class ScreenTriangles;
class Session;

/// Soft-selection options (the softSelect command). Distances are centimetres in world space.
struct SoftSelectOptions {
    enum Falloff { kVolume = 0, kSurface = 1, kGlobal = 2, kObject = 3 };
    struct CurvePoint {
        float value, position; ///< position 0 at the selection, 1 at the radius
        int interpolation;     ///< 0 none, 1 linear, 2 smooth, 3 spline
    };
    bool enabled = false;
    Falloff falloff = kVolume;
    double distance = 5.0;
    std::vector<CurvePoint> curve = {{1.0F, 0.0F, 2}, {0.0F, 1.0F, 2}};
};

/// Symmetry options (the symmetricModelling command).
struct SymmetryOptions {
    enum About { kObject, kWorld, kTopology };
    bool enabled = false;
    About about = kObject;
    int axis = 0; ///< 0 x, 1 y, 2 z
    double tolerance = 0.001;
    bool preserveSeam = false;
    double seamTolerance = 0.001;
};

/// A rich selection: the active selection with soft-selection weights, and its mirrored part. No point is in
/// both parts. Where a point and its mirror image are both selected, the one on the positive side of the axis
/// belongs to `selection`; points on the seam belong to `selection` always.
struct RichSelection {
    SelectionList selection;
    SelectionList symmetry;
    bool empty() const { return selection.items.empty() && symmetry.items.empty(); }
};

/// The session's selection and its preferences. Unrecorded; commands record through Edits::perform with the
/// lists before and after.
class SelectionState {
public:
    explicit SelectionState(Session& session);
    ~SelectionState();
    SelectionState(const SelectionState&) = delete;
    SelectionState& operator=(const SelectionState&) = delete;

    const SelectionList& active(); ///< dead nodes already dropped
    /// Takes each thing once, components ascending and without weights; empty components and dead nodes are
    /// left out.
    void setActive(SelectionList list);
    /// What getRichSelection gives: with soft selection on, the active components spread over the falloff
    /// with weights; symmetry on: the mirrored part apart from the primary part. A rich selection that was
    /// set is returned as set, until the active selection changes.
    RichSelection rich();
    /// Setting an empty one drops what was set before; the active selection stays as it is in any case.
    void setRich(RichSelection rich);
    /// Whether rich() is more than the active selection: soft selection or symmetry is on, or one was set.
    bool hasRich() const { return hasOverride || soft.enabled || symmetry.enabled; }
    /// To be called after soft or symmetry was changed: a rich selection that was set before counts no more.
    void optionsChanged();

    /// Everything that a command changes here, for undo.
    struct Snapshot {
        SelectionList list;
        RichSelection overridden;
        bool hasOverride = false;
    };
    Snapshot snapshot() const { return {list, overridden, hasOverride}; }
    void restore(const Snapshot& earlier);

    SoftSelectOptions soft;
    SymmetryOptions symmetry;
    bool componentMode = false;   ///< selectMode -component
    bool clickDrag = false;       ///< selectPref -clickDrag
    bool preselectHilite = false; ///< selectPref -preSelectHilite
    int clickBoxSize = 10;        ///< pixels, tolerance of a click
    SelectionList preselection;   ///< under the cursor, set by mouse motion
    bool trackOrder = false;

    /// Bumped at every change of the active or rich selection or of the options.
    std::uint64_t version = 0;

    /// Visible triangles on the screen, kept from pick to pick (selection/occlusion.h).
    std::shared_ptr<const ScreenTriangles> screenTriangles;

private:
    Session& owner;
    SelectionList list;
    RichSelection overridden;
    bool hasOverride = false;
    /// The last rich selection computed, and for which selection and scene.
    RichSelection computed;
    std::uint64_t computedVersion = 0, computedChanges = 0;
    bool hasComputed = false;
};

/// Adds the mirrored vertices, edges and faces of the mesh components in a list, per the symmetry options;
/// what SymmetrizeSelection does. Returns the new list without setting it. Throws host::Error for topological
/// symmetry, which is not supported.
SelectionList symmetrized(Session& session, const SelectionList& list);

} // namespace host
