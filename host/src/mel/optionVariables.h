#pragma once

#include "mel/value.h"

#include <map>
#include <string>
#include <utility>

namespace host::mel {

/// Preferences by name (`optionVar`): an int, float or string, or an array of these. They last as long as the
/// session; nothing is written to disk.
class OptionVariables {
public:
    /// Null when there is no such variable.
    const Value* find(const std::string& name) const;
    void set(const std::string& name, Value value) { values[name] = std::move(value); }
    /// Appends to an array variable of the element's type; anything else by that name is replaced.
    void append(const std::string& name, const Value& element);
    bool remove(const std::string& name) { return values.erase(name) != 0; }
    StringArray names() const;

private:
    std::map<std::string, Value> values;
};

} // namespace host::mel
