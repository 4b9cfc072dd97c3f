#include "mel/parser.h"

#include "mel/scriptError.h"

namespace host::mel {

/// A block of variables, for as long as it is parsed.
class Parser::BlockScope {
public:
    explicit BlockScope(Parser& parser) : scope(*parser.scope) { scope.blocks.emplace_back(); }
    ~BlockScope() { scope.blocks.pop_back(); }
    BlockScope(const BlockScope&) = delete;
    BlockScope& operator=(const BlockScope&) = delete;

private:
    Scope& scope;
};

Script Parser::parse()
{
    try {
        while (!scanner.atEnd())
            script.statements.push_back(statement());
    } catch (const ScriptError&) {
        throw;
    } catch (const Error& error) {
        scanner.fail(error.what());
    }
    script.cellCount = topScope.cellCount;
    return std::move(script);
}

Type Parser::typeHere()
{
    static const std::map<std::string_view, Type> kTypes = {{"int", Type::kInt},
                                                            {"float", Type::kFloat},
                                                            {"string", Type::kString},
                                                            {"vector", Type::kVector},
                                                            {"matrix", Type::kMatrix}};
    const auto found = kTypes.find(scanner.peekIdentifier());
    if (found == kTypes.end())
        return Type::kVoid;
    scanner.identifier();
    return found->second;
}

StatementRef Parser::statement()
{
    stack.check();
    const int line = scanner.line();
    StatementRef result;
    if (scanner.sees("{"))
        result = block();
    else if (scanner.accept(";"))
        result = std::make_unique<Block>(std::vector<StatementRef>());
    else if (const std::string keyword(scanner.peekIdentifier()); !keyword.empty())
        result = keywordStatement(keyword);
    else
        result = simpleStatement();
    result->line = line;
    return result;
}

StatementRef Parser::keywordStatement(std::string_view keyword)
{
    static const std::map<std::string_view, StatementRef (Parser::*)()> kStatements = {
        {"if", &Parser::ifStatement},         {"while", &Parser::whileStatement},
        {"do", &Parser::doStatement},         {"for", &Parser::forStatement},
        {"switch", &Parser::switchStatement}, {"return", &Parser::returnStatement}};
    const auto found = kStatements.find(keyword);
    if (found != kStatements.end()) {
        scanner.identifier();
        return (this->*found->second)();
    }
    if (keyword == "break" || keyword == "continue") {
        if (loopDepth == 0)
            scanner.failUnexpected();
        scanner.identifier();
        endStatement();
        return std::make_unique<Jump>(keyword == "break" ? Completion::kBreak : Completion::kContinue);
    }
    if (keyword == "else" || keyword == "case" || keyword == "default" || keyword == "in")
        scanner.failUnexpected();
    const bool isGlobal = scanner.acceptKeyword("global");
    if (scanner.acceptKeyword("proc")) {
        procedure(isGlobal);
        return std::make_unique<Block>(std::vector<StatementRef>());
    }
    const Scanner::Mark mark = scanner.mark();
    const Type type = typeHere();
    if (type != Type::kVoid && scanner.peek() == '$')
        return declaration(type, isGlobal);
    if (isGlobal)
        scanner.failUnexpected();
    scanner.back(mark);
    return simpleStatement();
}

/// A command or an expression.
StatementRef Parser::simpleStatement()
{
    const Scanner::Mark beginning = scanner.mark();
    ExpressionRef what;
    const std::string name(scanner.peekIdentifier());
    const bool isCatch = name == "catch" || name == "catchQuiet";
    if (name.empty() || isCatch) {
        what = expression();
    } else {
        what = command(false);
        // A call with parentheses can also begin an expression: `size($a) * 2`.
        if (!scanner.atEnd() && !scanner.sees(";") && !scanner.sees("}")) {
            scanner.back(beginning);
            what = expression();
        }
    }
    endStatement();
    return std::make_unique<ExpressionStatement>(std::move(what));
}

/// The last statement of a text needs no semicolon.
void Parser::endStatement()
{
    if (!scanner.atEnd())
        scanner.expect(";");
}

std::vector<StatementRef> Parser::statementsUntilBrace()
{
    const BlockScope variables(*this);
    std::vector<StatementRef> statements;
    while (!scanner.sees("}")) {
        if (scanner.atEnd())
            scanner.failUnexpected();
        statements.push_back(statement());
    }
    return statements;
}

StatementRef Parser::block()
{
    scanner.expect("{");
    std::vector<StatementRef> statements = statementsUntilBrace();
    scanner.expect("}");
    return std::make_unique<Block>(std::move(statements));
}

ExpressionRef Parser::condition()
{
    scanner.expect("(");
    ExpressionRef test = expression();
    scanner.expect(")");
    return test;
}

StatementRef Parser::ifStatement()
{
    ExpressionRef test = condition();
    StatementRef whenTrue = statement();
    StatementRef whenFalse;
    if (scanner.acceptKeyword("else"))
        whenFalse = statement();
    return std::make_unique<If>(std::move(test), std::move(whenTrue), std::move(whenFalse));
}

StatementRef Parser::whileStatement()
{
    auto loop = std::make_unique<Loop>();
    loop->condition = condition();
    ++loopDepth;
    loop->body = statement();
    --loopDepth;
    return loop;
}

StatementRef Parser::doStatement()
{
    auto loop = std::make_unique<Loop>();
    loop->testsAfter = true;
    ++loopDepth;
    loop->body = statement();
    --loopDepth;
    if (!scanner.acceptKeyword("while"))
        scanner.failUnexpected();
    loop->condition = condition();
    endStatement();
    return loop;
}

bool Parser::seesForIn()
{
    const Scanner::Mark mark = scanner.mark();
    typeHere();
    bool found = false;
    if (scanner.peek() == '$') {
        scanner.variableName();
        found = scanner.peekIdentifier() == "in";
    }
    scanner.back(mark);
    return found;
}

StatementRef Parser::forStatement()
{
    scanner.expect("(");
    if (seesForIn())
        return forIn();
    auto loop = std::make_unique<Loop>();
    const Scanner::Mark mark = scanner.mark();
    const Type type = typeHere();
    // A variable declared in the head belongs to the loop.
    std::optional<BlockScope> variables;
    if (type != Type::kVoid && scanner.peek() == '$') {
        variables.emplace(*this);
        loop->first.push_back(declaration(type, false));
        loop->first.back()->line = scanner.line();
    } else {
        scanner.back(mark);
        while (!scanner.sees(";")) {
            loop->first.push_back(std::make_unique<ExpressionStatement>(expression()));
            loop->first.back()->line = scanner.line();
            if (!scanner.accept(","))
                break;
        }
        scanner.expect(";");
    }
    if (!scanner.sees(";"))
        loop->condition = expression();
    scanner.expect(";");
    if (!scanner.sees(")"))
        loop->step = angledRow();
    scanner.expect(")");
    ++loopDepth;
    loop->body = statement();
    --loopDepth;
    return loop;
}

StatementRef Parser::forIn()
{
    std::optional<BlockScope> variables;
    const Type type = typeHere();
    std::unique_ptr<Place> element;
    if (type != Type::kVoid) {
        variables.emplace(*this);
        element = std::make_unique<Variable>(declare(scanner.variableName(), false));
    } else {
        element = place(true);
    }
    if (!scanner.acceptKeyword("in"))
        scanner.failUnexpected();
    ExpressionRef array = expression();
    scanner.expect(")");
    ++loopDepth;
    StatementRef body = statement();
    --loopDepth;
    return std::make_unique<ForIn>(std::move(element), type, std::move(array), std::move(body));
}

StatementRef Parser::switchStatement()
{
    ExpressionRef subject = condition();
    scanner.expect("{");
    const BlockScope variables(*this);
    std::vector<Switch::Case> cases;
    ++loopDepth;
    while (!scanner.sees("}")) {
        Switch::Case branch;
        if (!scanner.acceptKeyword("default")) {
            if (!scanner.acceptKeyword("case"))
                scanner.failUnexpected();
            branch.value = logical(false);
        }
        scanner.expect(":");
        const auto ends = [this] {
            const std::string_view next = scanner.peekIdentifier();
            return scanner.sees("}") || next == "case" || next == "default";
        };
        while (!ends())
            branch.statements.push_back(statement());
        cases.push_back(std::move(branch));
    }
    --loopDepth;
    scanner.expect("}");
    return std::make_unique<Switch>(std::move(subject), std::move(cases));
}

StatementRef Parser::returnStatement()
{
    ExpressionRef value;
    if (!scanner.atEnd() && !scanner.sees(";"))
        value = expression();
    endStatement();
    return std::make_unique<Return>(std::move(value));
}

} // namespace host::mel
