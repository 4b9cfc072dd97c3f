#pragma once

#include "graph/plug.h"
#include "graph/slots.h"

namespace host {

/// What is stored at and below one plug, to be put back later. If the plug lies in an element that does not
/// exist yet, putting back removes that element again, unless something else has come to be stored in it.
class StoredValue {
public:
    explicit StoredValue(const Plug& plug);
    /// Puts the stored state back as it was, whatever is locked or connected now, and passes the change on.
    void putBack() const;
    /// The same without telling anybody.
    void putBackQuietly() const;

private:
    void remove() const;

    Plug plug;
    Plug where; ///< the plug, or the outermost element around it that did not exist
    bool existed = false;
    Slot content;
};

} // namespace host
