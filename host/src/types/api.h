#pragma once

#include "types/object.h"

#include <maya/MObject.h>

#include <string>

class MDagPath;
class MPlug;
class MSelectionList;
class MString;

namespace host {

class DagNode;
class Node;
class Plug;
struct SelectionList;

/// The door between the interface's handle classes and what they stand for inside the host.
/// Only the host's own sources include this header. A null or dead handle gives a null pointer.
struct Api {
    static Object* object(const MObject& handle);
    static MObject wrap(const Object* object);

    /// The node behind a handle if it is alive and a node, else null.
    static Node* node(const MObject& handle);

    /// The last node of a path; null for an empty path or a dead node.
    static DagNode* node(const MDagPath& path);
    static MDagPath path(DagNode* node);

    static const Plug& plug(const MPlug& handle);
    static MPlug wrap(const Plug& plug);

    static SelectionList& list(MSelectionList& handle);
    static const SelectionList& list(const MSelectionList& handle);

    static std::string text(const MString& text);
};

} // namespace host
