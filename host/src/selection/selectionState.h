#pragma once

#include "selection/selectionList.h"

#include <functional>
#include <vector>

namespace host {

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
    std::vector<CurvePoint> curve; ///< the default curve: 1 at 0, 0 at 1, smooth
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

/// A rich selection: the active selection with soft-selection weights, and its mirrored part.
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

    const SelectionList& active(); ///< dead nodes already dropped
    void setActive(SelectionList list);
    /// What getRichSelection gives: with soft selection on, the active components spread over the falloff
    /// with weights; symmetry on: the mirrored part apart from the primary part. A rich selection that was
    /// set is returned as set, until the active selection changes.
    RichSelection rich();
    void setRich(RichSelection rich);

    SoftSelectOptions soft;
    SymmetryOptions symmetry;
    bool componentMode = false;      ///< selectMode -component
    bool clickDrag = false;          ///< selectPref -clickDrag
    bool preselectHilite = false;    ///< selectPref -preSelectHilite
    int clickBoxSize = 10;           ///< pixels, tolerance of a click
    SelectionList preselection;      ///< under the cursor, set by mouse motion
    bool trackOrder = false;

    /// Bumped at every change of the active or rich selection or of the options.
    std::uint64_t version = 0;

private:
    Session& owner;
    SelectionList list;
    RichSelection overridden;
    bool hasOverride = false;
};

/// Adds the mirrored vertices of the active mesh components to the active selection, per the symmetry
/// options; what SymmetrizeSelection does. Returns the new list without setting it.
SelectionList symmetrized(Session& session, const SelectionList& list);

} // namespace host
