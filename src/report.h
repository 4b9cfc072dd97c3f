#pragma once

#include "common.h"

#include <exception>
#include <maya/MDagPath.h>
#include <maya/MStatus.h>

// How failures reach people: one helper for each kind.

/// Writes the report of a failed call to the standard error stream and hands the status back, so that a
/// caller can write `return apiError(status, kContextSource, 201);`. Source names are in common.h; the line
/// is the call site's.
MStatus apiError(const MStatus& status, const char* source, int line);

/// Warns that an edited object is left alone: its path, then the reason. Nothing must have been written for
/// it.
void refuseObject(const MDagPath& path, const char* reason);

/// Ends the whole operation, with the text as its reason, where going on after a failed call would write
/// weights to the wrong place.
void require(const MStatus& status, const char* failure);

/// Shows an exception that reached the platform's door as an error that names the tool and says what was
/// being done. Takes what is being handled; throws nothing.
void reportException(const char* doing) noexcept;

// Reasons for refuseObject.
constexpr const char* kNoSuchObject = "it is no longer there; nothing was written for it.";
constexpr const char* kUnequalArrays =
    "its recorded weights do not fit its selected points; nothing was written for it.";
constexpr const char* kCopyTooShort = "the copied weights do not reach it; nothing was written for it.";
constexpr const char* kSparseInfluences = "the logical indices of its influences have gaps, which layer "
                                          "weights cannot address; nothing was written for it.";
constexpr const char* kNotDeformed = "the deformer does not deform it; nothing was written for it.";

// Reasons why a mode cannot edit that more than one mode gives.
constexpr const char* kNoDeformer = "No valid deformer has been specified.";
constexpr const char* kSkinHasModes =
    " is a skin cluster: use the mode skinCluster or dualQuaternion for its weights.";
constexpr const char* kNoLayers = "ngSkinTools2 is not loaded, and this mode edits its layers.";
constexpr const char* kNoInfluence = "No influence has been chosen: name one with the flag -influence.";

/// Runs what must happen whatever has failed before it: when it fails or throws it is tried once more, since
/// memory may have become free.
template <typename Action>
bool insist(Action&& action) noexcept
{
    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            if (action())
                return true;
        } catch (...) {
            continue;
        }
    }
    return false;
}

/// Runs the body of an operation that the platform calls. No exception may reach the platform: one becomes an
/// error message that says what was being done ("Pressing", "Undoing") and a failed status, and `takeBack`
/// leaves the scene as it was.
template <typename Body, typename TakeBack>
MStatus guarded(const char* doing, Body&& body, TakeBack&& takeBack) noexcept
{
    try {
        return body();
    } catch (...) {
        insist([&takeBack] {
            takeBack();
            return true;
        });
        reportException(doing);
    }
    return MS::kFailure;
}

template <typename Body>
MStatus guarded(const char* doing, Body&& body) noexcept
{
    return guarded(doing, body, [] {});
}
