#include "mel/parser.h"
#include "mel/parserSized.h"

#include <array>

namespace host::mel {

namespace {

struct OperatorText {
    std::string_view text;
    Operator operation;
};

/// The binary operators from the loosest to the tightest level; longer texts first within a level.
const std::array<std::vector<OperatorText>, 4> kLevels = {{
    {{"==", Operator::kEqual}, {"!=", Operator::kNotEqual}},
    {{"<=", Operator::kLessEqual},
     {">=", Operator::kGreaterEqual},
     {"<", Operator::kLess},
     {">", Operator::kGreater}},
    {{"+", Operator::kAdd}, {"-", Operator::kSubtract}},
    {{"*", Operator::kMultiply}, {"/", Operator::kDivide}, {"%", Operator::kModulo}, {"^", Operator::kCross}},
}};

int heightOf(const ExpressionRef& a, const ExpressionRef& b)
{
    return std::max(a->height, b->height);
}

int heightOf(const std::vector<ExpressionRef>& nodes)
{
    int height = 0;
    for (const ExpressionRef& node : nodes)
        height = std::max(height, node->height);
    return height;
}

} // namespace

ExpressionRef Parser::expression()
{
    stack.check();
    return conditional();
}

ExpressionRef Parser::conditional()
{
    ExpressionRef test = logical(false);
    if (!scanner.accept("?"))
        return test;
    ExpressionRef whenTrue = expression();
    scanner.expect(":");
    ExpressionRef whenFalse = expression();
    const int below = std::max(test->height, heightOf(whenTrue, whenFalse));
    return sized(std::make_unique<Conditional>(std::move(test), std::move(whenTrue), std::move(whenFalse)),
                 below);
}

ExpressionRef Parser::logical(bool isAnd)
{
    ExpressionRef left = isAnd ? binary(0) : logical(true);
    while (scanner.accept(isAnd ? "&&" : "||")) {
        ExpressionRef right = isAnd ? binary(0) : logical(true);
        const int below = heightOf(left, right);
        left = sized(std::make_unique<Logical>(isAnd, std::move(left), std::move(right)), below);
    }
    return left;
}

bool Parser::acceptOperator(int level, Operator& found)
{
    // "<<" and ">>" enclose vectors, and "+=" and its kin are assignments.
    if (scanner.sees("<<") || scanner.sees(">>"))
        return false;
    const Scanner::Mark mark = scanner.mark();
    for (const OperatorText& candidate : kLevels[static_cast<std::size_t>(level)]) {
        if (!scanner.accept(candidate.text))
            continue;
        found = candidate.operation;
        if (level < 2 || scanner.direct() != '=')
            return true;
        scanner.back(mark);
        return false;
    }
    return false;
}

ExpressionRef Parser::binary(int level)
{
    const bool tightest = level + 1 == static_cast<int>(kLevels.size());
    ExpressionRef left = tightest ? unary() : binary(level + 1);
    Operator operation = Operator::kAdd;
    while (acceptOperator(level, operation)) {
        ExpressionRef right = tightest ? unary() : binary(level + 1);
        const int below = heightOf(left, right);
        left = sized(std::make_unique<Binary>(operation, std::move(left), std::move(right)), below);
    }
    return left;
}

ExpressionRef Parser::unary()
{
    stack.check();
    if (scanner.sees("++") || scanner.sees("--"))
        return step(true);
    if (scanner.sees("!") && !scanner.sees("!=")) {
        scanner.accept("!");
        ExpressionRef operand = unary();
        const int below = operand->height;
        return sized(std::make_unique<Not>(std::move(operand)), below);
    }
    if (scanner.accept("-")) {
        ExpressionRef operand = unary();
        const int below = operand->height;
        return sized(std::make_unique<Negation>(std::move(operand)), below);
    }
    if (scanner.accept("+"))
        return unary();
    return primary();
}

/// ++$a, --$a; the forms behind the variable are read with it.
ExpressionRef Parser::step(bool before)
{
    const int change = scanner.accept("++") ? 1 : -1;
    if (change < 0)
        scanner.expect("--");
    std::unique_ptr<Place> target = place(false);
    const int below = target->height;
    return sized(std::make_unique<Step>(std::move(target), change, before), below);
}

ExpressionRef Parser::primary()
{
    switch (scanner.peek()) {
    case '$':
        return placeOrComponent();
    case '(':
        return component(parenthesized());
    case '"':
        return std::make_unique<Literal>(scanner.quoted());
    case '`':
        return component(backquoted());
    case '{':
        return arrayLiteral();
    case '<':
        if (scanner.sees("<<"))
            return component(angled());
        break;
    default:
        break;
    }
    if (scanner.seesNumber())
        return std::make_unique<Literal>(scanner.number());
    if (scanner.seesIdentifier())
        return named();
    scanner.failUnexpected();
}

/// A variable with whatever follows it: an assignment, a step, or a component.
ExpressionRef Parser::placeOrComponent()
{
    std::unique_ptr<Place> target = place(false);
    for (const std::string_view text : {"++", "--"}) {
        if (scanner.accept(text)) {
            const int below = target->height;
            return sized(std::make_unique<Step>(std::move(target), text == "++" ? 1 : -1, false), below);
        }
    }
    static const std::array<OperatorText, 6> kCombined = {{{"+=", Operator::kAdd},
                                                           {"-=", Operator::kSubtract},
                                                           {"*=", Operator::kMultiply},
                                                           {"/=", Operator::kDivide},
                                                           {"%=", Operator::kModulo},
                                                           {"^=", Operator::kCross}}};
    std::optional<Operator> combined;
    for (const OperatorText& candidate : kCombined) {
        if (scanner.accept(candidate.text))
            combined = candidate.operation;
    }
    if (!combined) {
        if (scanner.sees("==") || !scanner.accept("="))
            return component(std::move(target));
    }
    ExpressionRef value = expression();
    const int below = std::max(target->height, value->height);
    return sized(std::make_unique<Assignment>(std::move(target), combined, std::move(value)), below);
}

/// The component `.x` directly behind a vector, if there is one.
ExpressionRef Parser::component(ExpressionRef vector)
{
    if (scanner.direct() != '.' || isIdentifierPart(scanner.direct(2)))
        return vector;
    const char axis = scanner.direct(1);
    if (axis < 'x' || axis > 'z')
        return vector;
    scanner.accept(".");
    scanner.identifier();
    if (scanner.sees("=") && !scanner.sees("=="))
        scanner.fail("A component of a vector cannot be assigned; assign the whole vector.");
    const int below = vector->height;
    return sized(std::make_unique<Component>(std::move(vector), axis - 'x'), below);
}

ExpressionRef Parser::parenthesized()
{
    const Scanner::Mark mark = scanner.mark();
    scanner.expect("(");
    if (const Type type = typeHere(); type != Type::kVoid) {
        if (scanner.accept(")"))
            return cast(type);
        scanner.back(mark);
        scanner.expect("(");
    }
    ExpressionRef inner = expression();
    scanner.expect(")");
    return inner;
}

ExpressionRef Parser::cast(Type type)
{
    ExpressionRef operand = unary();
    const int below = operand->height;
    return sized(std::make_unique<Cast>(type, std::move(operand)), below);
}

/// A name in an expression: a word of truth, a cast, catch, or a call with parentheses.
ExpressionRef Parser::named()
{
    const std::string_view name = scanner.peekIdentifier();
    if (name == "catch" || name == "catchQuiet")
        return catching();
    if (name == "true" || name == "on" || name == "yes" || name == "false" || name == "off" || name == "no") {
        const bool truth = name == "true" || name == "on" || name == "yes";
        scanner.identifier();
        return std::make_unique<Literal>(truth);
    }
    if (const Type type = typeHere(); type != Type::kVoid) {
        scanner.expect("(");
        ExpressionRef operand = expression();
        scanner.expect(")");
        const int below = operand->height;
        return sized(std::make_unique<Cast>(type, std::move(operand)), below);
    }
    const Scanner::Mark mark = scanner.mark();
    std::string called = scanner.identifier();
    if (scanner.peek() != '(') {
        scanner.back(mark);
        scanner.failUnexpected();
    }
    std::vector<Call::Part> parts;
    for (ExpressionRef& argument : arguments())
        parts.push_back({Word::Kind::kComputed, std::move(argument)});
    return component(callOf(std::move(called), std::move(parts)));
}

ExpressionRef Parser::catching()
{
    const bool quiet = scanner.identifier() == "catchQuiet";
    if (scanner.peek() != '(' && scanner.peek() != '`')
        scanner.failUnexpected();
    ExpressionRef guarded = scanner.peek() == '(' ? parenthesized() : backquoted();
    const int below = guarded->height;
    return sized(std::make_unique<Catch>(std::move(guarded), quiet), below);
}

std::vector<ExpressionRef> Parser::arguments()
{
    std::vector<ExpressionRef> given;
    scanner.expect("(");
    if (scanner.accept(")"))
        return given;
    do {
        given.push_back(expression());
    } while (scanner.accept(","));
    scanner.expect(")");
    return given;
}

std::vector<ExpressionRef> Parser::angledRow()
{
    std::vector<ExpressionRef> row;
    do {
        row.push_back(expression());
    } while (scanner.accept(","));
    return row;
}

/// <<x, y, z>> or a matrix <<a, b; c, d>>
ExpressionRef Parser::angled()
{
    stack.check();
    scanner.expect("<<");
    std::vector<std::vector<ExpressionRef>> rows;
    int below = 0;
    do {
        rows.push_back(angledRow());
        below = std::max(below, heightOf(rows.back()));
        if (rows.back().size() != rows.front().size())
            scanner.fail("The rows of a matrix differ in length.");
    } while (scanner.accept(";"));
    scanner.expect(">>");
    if (rows.size() == 1 && rows.front().size() == 3)
        return sized(std::make_unique<VectorLiteral>(std::move(rows.front())), below);
    return sized(std::make_unique<MatrixLiteral>(std::move(rows)), below);
}

ExpressionRef Parser::arrayLiteral()
{
    stack.check();
    scanner.expect("{");
    std::vector<ExpressionRef> elements;
    if (!scanner.sees("}"))
        elements = angledRow();
    scanner.expect("}");
    const int below = heightOf(elements);
    return sized(std::make_unique<ArrayLiteral>(std::move(elements)), below);
}

} // namespace host::mel
