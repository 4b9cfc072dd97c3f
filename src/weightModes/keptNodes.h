#pragma once

#include <maya/MObject.h>
#include <maya/MObjectArray.h>
#include <maya/MObjectHandle.h>
#include <maya/MSelectionList.h>
#include <vector>

/// Nodes that are remembered while the scene may change: between press and release, copy and paste, an edit
/// and its undo. Entry n belongs to item n of a selection. A node may be deleted meanwhile, or the scene
/// replaced; then nothing else that refers to it may be touched, be it a path, a plug or a function set.
using KeptNodes = std::vector<MObjectHandle>;

KeptNodes keep(const MObjectArray& nodes);
/// The shapes of a selection's items.
KeptNodes keepShapes(const MSelectionList& selection);

/// The node while it is in the scene, null otherwise and beyond the end.
inline MObject liveNode(const MObjectHandle& kept)
{
    return kept.isValid() ? kept.object() : MObject();
}
inline MObject liveNode(const KeptNodes& kept, unsigned int index)
{
    return index < kept.size() ? liveNode(kept[index]) : MObject();
}
