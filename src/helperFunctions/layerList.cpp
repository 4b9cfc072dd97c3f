#include "helperFunctions/layerList.h"

#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace {

using nlohmann::json;
using Field = LayerEntry::Field;

/// Follows the text value by value. Depth 1 is the list, 2 a layer, 3 and more what is inside its fields.
class EntryReader : public nlohmann::json_sax<json> {
public:
    std::vector<LayerEntry> entries;

    bool null() override { return scalar(); }
    bool boolean(bool) override { return scalar(); }
    bool number_float(number_float_t, const string_t&) override { return scalar(); }
    bool binary(binary_t&) override { return scalar(); }
    bool number_integer(number_integer_t value) override { return integer(value); }
    bool number_unsigned(number_unsigned_t value) override
    {
        constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
        return integer(value > static_cast<number_unsigned_t>(kMost) ? kMost
                                                                     : static_cast<std::int64_t>(value));
    }
    bool string(string_t& value) override
    {
        if (depth == 2 && field == "name")
            entries.back().name = value;
        return scalar(Kind::kText);
    }
    bool start_object(std::size_t) override { return enter(Kind::kObject); }
    bool key(string_t& name) override
    {
        if (depth == 2)
            field = name;
        return true;
    }
    bool end_object() override
    {
        --depth;
        return true;
    }
    bool start_array(std::size_t) override { return enter(Kind::kArray); }
    bool end_array() override
    {
        --depth;
        return true;
    }
    bool parse_error(std::size_t, const std::string&, const json::exception& failure) override
    {
        throw std::invalid_argument(failure.what());
    }

private:
    enum class Kind { kOther, kText, kInteger, kArray, kObject };

    bool scalar(Kind kind = Kind::kOther)
    {
        place(kind);
        return true;
    }
    bool integer(std::int64_t value)
    {
        if (depth == 2 && field == "id")
            entries.back().id = value;
        return scalar(Kind::kInteger);
    }
    bool enter(Kind kind)
    {
        place(kind);
        ++depth;
        return true;
    }
    /// A value of this kind stands at this depth.
    void place(Kind kind)
    {
        if (depth == 0 && kind != Kind::kArray)
            throw std::invalid_argument("it is not an array");
        if (depth == 1 && kind != Kind::kObject)
            throw std::invalid_argument("an entry is not an object");
        if (depth == 1)
            entries.emplace_back();
        else if (depth == 2)
            setField(kind);
        else if (depth == 3 && field == "children" && entries.back().childrenField == Field::kGood)
            entries.back().hasChildren = true;
    }
    void setField(Kind kind)
    {
        LayerEntry& entry = entries.back();
        const auto is = [kind](Kind wanted) { return kind == wanted ? Field::kGood : Field::kWrong; };
        if (field == "name") {
            entry.nameField = is(Kind::kText);
        } else if (field == "id") {
            entry.idField = is(Kind::kInteger);
        } else if (field == "children") {
            entry.childrenField = is(Kind::kArray);
            entry.hasChildren = false;
        }
    }

    int depth = 0;
    std::string field; ///< of the layer, the one that is being read
};

} // namespace

std::vector<LayerEntry> readLayerEntries(const std::string& text)
{
    EntryReader reader;
    json::sax_parse(text, &reader);
    return std::move(reader.entries);
}
