#pragma once

#include "weightModes/weightStore.h"

// Pastes that give every target point all influences of the point that it matched. Influences go over by
// path, or else by name; what the target's skin lacks is named in a warning, and its share goes to the
// others. A point of which nothing can go over keeps what it has. False when the object is refused, which has
// been said.

/// Rows of a skin; needs its old weights in the target's record.
bool fillSkinRows(const PasteJob& job, PasteRecord& pasted);
/// The influences of a layer; needs the old weights of all influences in the target's record.
bool fillLayerRows(const PasteJob& job, PasteRecord& pasted);
