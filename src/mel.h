#pragma once

#include "common.h"

#include <maya/MStatus.h>

// The commands that the tool gives to the platform's script language.

/// Runs a command without echo and off the undo queue; it reports its failures itself.
MStatus runMel(const MString& command);
/// The same for a query with an integer result; 0 when there is none.
int queryMelInt(const MString& command);
/// Queues a command for the next idle moment, without echo.
void runMelOnIdle(const MString& command);
/// Mirrors the selection when symmetry is on. Every selection change made by the tool is followed by it.
void symmetrizeSelection();

/// All undo entries made while one of these lives become a single undo.
class UndoChunk {
public:
    UndoChunk();
    ~UndoChunk();
    UndoChunk(const UndoChunk&) = delete;
    UndoChunk& operator=(const UndoChunk&) = delete;

private:
    bool open; ///< a chunk that never opened must not close another one
};
