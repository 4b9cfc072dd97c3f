#include "graph/graph.h"
#include "graph/nodeState.h"
#include "graph/slots.h"
#include "graph/units.h"
#include "types/error.h"

#include <array>

namespace host {

namespace {

/// Between angles and plain numbers the platform's own unit counts, which is the radian.
double delivered(double value, const Attribute& from, const Attribute& to)
{
    const bool fromAngle = from.type == AttributeType::kAngle;
    const bool toAngle = to.type == AttributeType::kAngle;
    if (fromAngle && !toAngle)
        value *= kRadiansPerDegree;
    else if (toAngle && !fromAngle)
        value /= kRadiansPerDegree;
    return narrowed(to.type, value);
}

/// Whether a value comes through a connection.
bool passes(const Attribute& from, const Attribute& to)
{
    return from.type == to.type || (from.isNumber() && to.isNumber());
}

} // namespace

void Plug::requireNumber() const
{
    alive();
    if (!definition->isNumber() || isArray())
        fail("has no number.");
    if (!isResolved())
        fail("has no value: an index is missing.");
}

void Plug::requireType(AttributeType type, const char* word) const
{
    alive();
    if (definition->type != type || isArray())
        fail(std::string("has no ") + word + ".");
    if (!isResolved())
        fail("has no value: an index is missing.");
}

Plug Plug::ancestor() const
{
    if (isElement())
        return array();
    return isChild() ? parent() : Plug();
}

bool Plug::feeding(Plug& source) const
{
    const NodeState& state = owner->state();
    const RootState* root = state.findRoot(*rootOwner);
    if (!mayBeFed(root, *definition))
        return false;
    struct Step {
        bool element;
        std::uint32_t position;
    };
    Step path[2 * kMaxDepth + 8];
    unsigned length = 0;
    Plug step = *this;
    auto found = state.byDestination.find(PlugKey(step));
    while (found == state.byDestination.end()) {
        if (length == sizeof path / sizeof path[0] || (!step.isElement() && !step.isChild()))
            return false;
        path[length++] =
            step.isElement() ? Step{true, step.logicalIndex()} : Step{false, step.attribute()->childIndex};
        step = step.ancestor();
        found = state.byDestination.find(PlugKey(step));
    }
    source = found->second->source;
    while (length > 0) {
        const Step down = path[--length];
        if (down.element ? !source.isArray() : down.position >= source.attribute()->children.size())
            return false;
        source = down.element ? source.element(down.position) : source.child(down.position);
    }
    return true;
}

/// The way of a value from where it is stored to the plug that has it through connections.
class Plug::Route {
public:
    /// Brings the output that the value comes from up to date. A circle ends where it begins, with a warning.
    explicit Route(const Plug& plug) : last(plug)
    {
        Plug source, mark = plug;
        std::size_t steps = 0, most = 2;
        while (last.comesFrom(source)) {
            add(*last.definition);
            last = source;
            ++steps;
            if (last == mark) {
                endCircle(plug, steps);
                return;
            }
            if (steps == most) {
                mark = last;
                steps = 0;
                most *= 2;
            }
        }
        if (last.rootOwner->flags.output && !last.feeding(source))
            last.owner->evaluate(*last.rootOwner);
    }

    const Plug& end() const { return last; }

    /// A number from the end, as each plug on the way narrows it.
    double delivered(double value) const
    {
        const Attribute* from = last.definition;
        for (std::size_t step = length; step-- > 0;) {
            const Attribute* to = step < kFew ? few[step] : more[step - kFew];
            value = host::delivered(value, *from, *to);
            from = to;
        }
        return value;
    }

private:
    static constexpr std::size_t kFew = 8;

    void add(const Attribute& passed)
    {
        if (length < kFew)
            few[length] = &passed;
        else
            more.push_back(&passed);
        ++length;
    }

    /// Two that go at the length of the circle from one another meet first where it begins.
    void endCircle(const Plug& start, std::size_t circle)
    {
        Plug ahead = start, behind = start;
        for (; circle > 0; --circle)
            ahead.comesFrom(ahead);
        for (length = 0; behind != ahead; ++length) {
            behind.comesFrom(behind);
            ahead.comesFrom(ahead);
        }
        last = behind;
        last.owner->graph().reportCycle(last);
    }

    Plug last;
    std::size_t length = 0;
    std::array<const Attribute*, kFew> few{}; ///< of the plugs passed, the first of them the reader
    std::vector<const Attribute*> more;
};

/// The plug whose value this one has by a connection that lets it through.
bool Plug::comesFrom(Plug& source) const
{
    Plug found;
    if (!feeding(found) || !passes(*found.definition, *definition))
        return false;
    source = found;
    return true;
}

double Plug::number() const
{
    requireNumber();
    if (!rootOwner->flags.output && !mayBeFed(owner->state().findRoot(*rootOwner), *definition))
        return storedNumber();
    const Route route(*this);
    return route.delivered(route.end().storedNumber());
}

std::string Plug::text() const
{
    alive();
    return Route(*this).end().storedText();
}

Imath::M44d Plug::matrix() const
{
    requireType(AttributeType::kMatrix, "matrix");
    return Route(*this).end().storedMatrix();
}

DataRef Plug::data() const
{
    requireType(AttributeType::kData, "data");
    return Route(*this).end().storedData();
}

double Plug::storedNumber() const
{
    requireNumber();
    if (const NumericArray* array = owner->slots().findNumbers(*this))
        return array->get(logicalIndex());
    const Slot* slot = owner->slots().find(*this);
    if (!slot)
        return definition->defaultNumber;
    if (const auto* value = std::get_if<double>(&slot->value))
        return *value;
    if (const auto* skin = slot->as<WeightRows>()) {
        const unsigned own = definition->ownIndexSlot();
        return own > 0 ? skin->get(indices[own - 1], indices[own]) : definition->defaultNumber;
    }
    return definition->defaultNumber;
}

std::string Plug::storedText() const
{
    alive();
    if ((definition->type != AttributeType::kString && definition->type != AttributeType::kOpaque) ||
        isArray())
        fail("has no text.");
    if (!isResolved())
        fail("has no value: an index is missing.");
    const Slot* slot = owner->slots().find(*this);
    const auto* value = slot ? slot->as<std::string>() : nullptr;
    return value ? *value : definition->defaultText;
}

Imath::M44d Plug::storedMatrix() const
{
    requireType(AttributeType::kMatrix, "matrix");
    const Slot* slot = owner->slots().find(*this);
    const auto* value = slot ? slot->as<Imath::M44d>() : nullptr;
    return value ? *value : Imath::M44d();
}

DataRef Plug::storedData() const
{
    requireType(AttributeType::kData, "data");
    const Slot* slot = owner->slots().find(*this);
    const auto* value = slot ? std::get_if<DataRef>(&slot->value) : nullptr;
    return value ? *value : nullptr;
}

bool Plug::hasStored() const
{
    alive();
    if (!isResolved())
        return false;
    const Slot* slot = owner->slots().find(*this);
    if (!slot)
        return false;
    if (const auto* array = slot->as<NumericArray>(); array && isElement())
        return array->has(logicalIndex());
    if (const auto* skin = slot->as<WeightRows>(); skin && !(definition->flags.weightRows && isArray())) {
        if (definition->flags.weightRows)
            return skin->hasRow(logicalIndex());
        const unsigned own = definition->ownIndexSlot();
        return isArray() ? skin->row(indices[own - 1]).count > 0 : skin->has(indices[own - 1], indices[own]);
    }
    return slot->holdsValue();
}

std::vector<std::uint32_t> Plug::storedIndices() const
{
    alive();
    if (!isArray())
        fail("is not an array.");
    std::vector<std::uint32_t> result;
    const Slot* slot = isResolved() ? owner->slots().find(*this) : nullptr;
    if (!slot)
        return result;
    if (const auto* array = slot->as<NumericArray>())
        return array->indices();
    if (const auto* sparse = slot->as<SparseSlots>())
        for (const auto& element : sparse->elements)
            result.push_back(element.first);
    const auto* skin = slot->as<WeightRows>();
    if (skin && definition->flags.weightRows) {
        result = skin->rowIndices();
    } else if (skin) {
        for (const WeightRows::Entry entry : skin->row(indices[definition->ownIndexSlot() - 1]))
            result.push_back(entry.column);
    }
    return result;
}

const NumericArray* Plug::numbers() const
{
    alive();
    const Slot* slot = isArray() && isResolved() ? owner->slots().find(*this) : nullptr;
    return slot ? slot->as<NumericArray>() : nullptr;
}

const WeightRows* Plug::rows() const
{
    alive();
    const Slot* slot = isArray() && isResolved() ? owner->slots().find(*this) : nullptr;
    return slot ? slot->as<WeightRows>() : nullptr;
}

} // namespace host
