#include "scene/assignValues.h"

#include "graph/node.h"
#include "graph/numericArray.h"
#include "graph/weightRows.h"
#include "scene/dataText.h"
#include "scene/maStatement.h"
#include "scene/plugRange.h"
#include "scene/sceneInfo.h"

namespace host {

namespace {

class Assigner {
public:
    Assigner(const std::string& typeWord, const SceneUnits& inUnits, MaCursor& words)
        : type(typeWord), units(inUnits), cursor(words)
    {}

    void run(const PlugRange& range)
    {
        const Attribute& attribute = *range.plug.attribute();
        if (attribute.type == AttributeType::kData && type.empty())
            cursor.fail("the value of \"" + attribute.longName + "\" needs a -type");
        if (range.count() > cursor.left())
            cursor.fail("there are fewer values than elements");
        if (range.ranged && attribute.isNumber() && !isWeight(attribute) && attribute.flags.array &&
            range.slot == attribute.ownIndexSlot()) {
            const Plug array = range.plug.array();
            NumericArray& numbers = array.makeNumbers();
            for (std::uint32_t index = range.first; index <= range.last; ++index)
                numbers.set(index, inSceneUnits(attribute, cursor.number()));
            array.changed();
        } else {
            for (std::size_t step = 0; step < range.count(); ++step)
                assign(range.at(step));
        }
        cursor.expectEnd();
    }

private:
    /// An element of a row of weights.
    static bool isWeight(const Attribute& attribute)
    {
        return attribute.parent && attribute.parent->flags.weightRows;
    }

    double inSceneUnits(const Attribute& attribute, double value) const
    {
        if (attribute.type == AttributeType::kDistance)
            return value * units.centimetres;
        if (attribute.type == AttributeType::kAngle)
            return value * units.degrees;
        return value;
    }

    void assign(const Plug& plug)
    {
        const Attribute& attribute = *plug.attribute();
        if (plug.isArray())
            return assignArray(plug);
        if (attribute.isNumber())
            return assignNumber(plug);
        switch (attribute.type) {
        case AttributeType::kCompound:
            for (unsigned child = 0; child < attribute.children.size(); ++child) {
                if (attribute.children[child]->type != AttributeType::kMessage)
                    assign(plug.child(child));
            }
            return;
        case AttributeType::kString:
            return plug.setText(cursor.text());
        case AttributeType::kMatrix:
            return assignMatrix(plug);
        case AttributeType::kData:
            return plug.setData(readData(cursor, type));
        default:
            cursor.fail("the attribute \"" + attribute.longName + "\" takes no value");
        }
    }

    void assignNumber(const Plug& plug)
    {
        if (!isWeight(*plug.attribute()))
            return plug.setNumber(inSceneUnits(*plug.attribute(), cursor.number()));
        const Plug rows(plug.node(), plug.attribute()->parent);
        rows.makeRows().set(plug.index(0), plug.index(1), cursor.number());
        rows.changed();
    }

    void assignArray(const Plug& array)
    {
        if (isWeight(*array.attribute()))
            Plug(array.node(), array.attribute()->parent).makeRows().touchRow(array.index(0));
        for (std::size_t left = cursor.count(); left > 0; --left) {
            const long long index = cursor.integer();
            if (index < 0 || index >= Plug::kAnyIndex)
                cursor.fail("\"" + std::to_string(index) + "\" is no index");
            assign(array.element(static_cast<std::uint32_t>(index)));
        }
    }

    void assignMatrix(const Plug& plug)
    {
        if (!type.empty() && type != "matrix" && type != "fltMatrix")
            cursor.fail("a value of type \"" + type + "\" is no matrix");
        if (cursor.peek().text != "xform")
            return plug.setMatrix(readMatrix(cursor));
        cursor.next();
        plug.setMatrix(readXform(cursor));
    }

    const std::string& type;
    const SceneUnits& units;
    MaCursor& cursor;
};

} // namespace

void assignValues(const PlugRange& range, const std::string& type, const SceneUnits& units, MaCursor& words)
{
    if (!words.atEnd())
        Assigner(type, units, words).run(range);
}

} // namespace host
