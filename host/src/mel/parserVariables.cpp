#include "mel/parser.h"

namespace host::mel {

Parser::Parser(const std::string& text, const std::string& fileName, const StackLimit& limit,
               std::function<bool(const std::string&)> isGlobal)
    : scanner(text, fileName), file(fileName), stack(limit), existsGlobally(std::move(isGlobal))
{}

const VariableSlot* Parser::findLocal(const std::string& name) const
{
    for (auto innermost = scope->blocks.rbegin(); innermost != scope->blocks.rend(); ++innermost) {
        const auto found = innermost->find(name);
        if (found != innermost->end())
            return &found->second;
    }
    return nullptr;
}

VariableSlot Parser::declare(const std::string& name, bool isGlobal)
{
    if (!scope->isProcedure && scope->blocks.empty()) {
        newGlobals.insert(name);
        return {name, true, 0};
    }
    auto& innermost = scope->blocks.back();
    const auto found = innermost.find(name);
    if (found != innermost.end() && found->second.isGlobal == isGlobal)
        return found->second;
    VariableSlot slot{name, isGlobal, isGlobal ? 0 : scope->cellCount++};
    innermost[name] = slot;
    return slot;
}

VariableSlot Parser::resolve(const std::string& name, bool assigned)
{
    if (const VariableSlot* const local = findLocal(name))
        return *local;
    const bool seesGlobals = !scope->isProcedure;
    if (seesGlobals && (scope->blocks.empty() || newGlobals.count(name) != 0 || existsGlobally(name))) {
        if (assigned)
            newGlobals.insert(name);
        return {name, true, 0};
    }
    if (assigned)
        return declare(name, false);
    scanner.fail("\"" + name + "\" is an undeclared variable.");
}

/// Whether `=` comes behind the variable name just read and its indices.
bool Parser::assignmentFollows()
{
    const Scanner::Mark mark = scanner.mark();
    int depth = 0;
    while (!scanner.atEnd() && (depth > 0 || scanner.sees("["))) {
        depth += scanner.sees("[") ? 1 : 0;
        depth -= scanner.sees("]") ? 1 : 0;
        if (scanner.sees("\""))
            scanner.quoted();
        else
            scanner.accept(std::string(1, scanner.peek()));
    }
    const bool follows = scanner.sees("=") && !scanner.sees("==");
    scanner.back(mark);
    return follows;
}

/// $name or $name[index]. `assigned` lets a name that is new here become a variable.
std::unique_ptr<Place> Parser::place(bool assigned)
{
    const std::string name = scanner.variableName();
    const VariableSlot slot = resolve(name, assigned || assignmentFollows());
    if (!scanner.accept("["))
        return std::make_unique<Variable>(slot);
    ExpressionRef first = expression();
    scanner.expect("]");
    ExpressionRef second;
    if (scanner.accept("[")) {
        second = expression();
        scanner.expect("]");
    }
    const int below = std::max(first->height, second ? second->height : 0);
    auto element = std::make_unique<Element>(slot, std::move(first), std::move(second));
    element->height = below + 1;
    return element;
}

} // namespace host::mel
