#include "mel/parser.h"
#include "mel/scriptError.h"

namespace host::mel {

StatementRef Parser::declaration(Type type, bool isGlobal)
{
    std::vector<Declaration::Entry> entries;
    do {
        entries.push_back(declarationEntry(type, isGlobal));
    } while (scanner.accept(","));
    endStatement();
    return std::make_unique<Declaration>(std::move(entries));
}

Declaration::Entry Parser::declarationEntry(Type type, bool isGlobal)
{
    constexpr int kMostElements = 1 << 24;
    Declaration::Entry entry;
    const std::string name = scanner.variableName();
    entry.type = type;
    std::vector<int> sizes;
    while (scanner.accept("[")) {
        const int size = scanner.sees("]") ? 0 : scanner.number().toInt();
        if (size < 0 || size > kMostElements)
            scanner.fail("\"" + name + "\" cannot have " + std::to_string(size) + " elements.");
        sizes.push_back(size);
        scanner.expect("]");
    }
    const std::size_t wanted = type == Type::kMatrix ? 2 : sizes.empty() ? 0 : 1;
    if (sizes.size() != wanted)
        scanner.fail("\"" + name + "\" has the wrong number of dimensions for its type.");
    if (type != Type::kMatrix && !sizes.empty())
        entry.type = arrayOf(type);
    entry.rows = sizes.empty() ? 0 : sizes[0];
    entry.columns = sizes.size() < 2 ? 0 : sizes[1];
    if (type == Type::kMatrix && entry.columns > 0 && entry.rows > kMostElements / entry.columns)
        scanner.fail("The matrix \"" + name + "\" is too large.");
    if (scanner.sees("=") && !scanner.sees("==")) {
        scanner.accept("=");
        entry.initial = expression();
    }
    // Only now: the value may speak of an outer variable of the same name.
    entry.slot = declare(name, isGlobal);
    return entry;
}

void Parser::procedure(bool isGlobal)
{
    if (scope->isProcedure || !scope->blocks.empty())
        scanner.fail("A procedure cannot be declared inside a block.");
    auto result = std::make_shared<Procedure>();
    result->isGlobal = isGlobal;
    result->fileName = file;
    result->returnType = typeHere();
    if (result->returnType != Type::kVoid && scanner.accept("[")) {
        scanner.expect("]");
        result->returnType = arrayOf(result->returnType);
    }
    result->name = scanner.identifier();
    Scope own;
    own.isProcedure = true;
    own.blocks.emplace_back();
    Scope* const outer = std::exchange(scope, &own);
    const int outerLoops = std::exchange(loopDepth, 0);
    result->parameters = parameters();
    scanner.expect("{");
    result->body = std::make_unique<Block>(statementsUntilBrace());
    result->body->line = scanner.line();
    scanner.expect("}");
    scope = outer;
    loopDepth = outerLoops;
    result->cellCount = own.cellCount;
    script.procedures.push_back(std::move(result));
}

std::vector<Parameter> Parser::parameters()
{
    std::vector<Parameter> result;
    scanner.expect("(");
    while (!scanner.sees(")")) {
        Parameter parameter;
        parameter.type = typeHere();
        if (parameter.type == Type::kVoid)
            scanner.failUnexpected();
        parameter.slot = declare(scanner.variableName(), false);
        bool indexed = false;
        while (scanner.accept("[")) {
            if (scanner.seesNumber())
                scanner.number();
            scanner.expect("]");
            indexed = true;
        }
        if (indexed && parameter.type != Type::kMatrix)
            parameter.type = arrayOf(parameter.type);
        result.push_back(std::move(parameter));
        if (!scanner.accept(","))
            break;
    }
    scanner.expect(")");
    return result;
}

} // namespace host::mel
