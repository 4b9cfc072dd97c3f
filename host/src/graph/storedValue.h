#pragma once

#include "graph/plug.h"
#include "graph/slots.h"

namespace host {

/// What is stored at and below one plug, to be put back later. If the plug lies in an element that does not
/// exist yet, putting back removes that element again.
class StoredValue {
public:
    explicit StoredValue(const Plug& plug);
    /// Puts the stored state back as it was, whatever is locked or connected now, and passes the change on.
    void putBack() const;
    /// The same without telling anybody.
    void putBackQuietly() const;

private:
    Plug where;
    bool existed = false;
    Slot content;
};

} // namespace host
