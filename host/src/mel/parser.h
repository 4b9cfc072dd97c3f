#pragma once

#include "mel/expressions.h"
#include "mel/scanner.h"
#include "mel/stackLimit.h"
#include "mel/statements.h"
#include "mel/variables.h"

#include <functional>
#include <set>

namespace host::mel {

/// Turns text into a Script: recursive descent straight over the characters (the folder's README says why).
/// Throws ScriptError at the first thing that does not parse; a procedure that reads a variable which it
/// neither declares nor assigns does not parse either.
class Parser {
public:
    /// `isGlobal` tells which global variables exist already, by name with dollar sign.
    Parser(const std::string& text, const std::string& fileName, const StackLimit& limit,
           std::function<bool(const std::string&)> isGlobal);

    Script parse();

private:
    /// The variables that a procedure, or the text outside procedures, has declared so far.
    struct Scope {
        std::vector<std::map<std::string, VariableSlot>> blocks; ///< innermost last
        std::size_t cellCount = 0;
        bool isProcedure = false;
    };
    class BlockScope;

    // Statements (parserStatements.cpp)
    StatementRef statement();
    StatementRef keywordStatement(std::string_view keyword);
    StatementRef simpleStatement();
    StatementRef block();
    std::vector<StatementRef> statementsUntilBrace();
    StatementRef ifStatement();
    StatementRef whileStatement();
    StatementRef doStatement();
    StatementRef forStatement();
    StatementRef forIn();
    bool seesForIn();
    StatementRef switchStatement();
    StatementRef returnStatement();
    StatementRef declaration(Type type, bool isGlobal);
    Declaration::Entry declarationEntry(Type type, bool isGlobal);
    void procedure(bool isGlobal);
    std::vector<Parameter> parameters();
    ExpressionRef condition();
    void endStatement();
    Type typeHere();

    // Variables (parserVariables.cpp)
    VariableSlot declare(const std::string& name, bool isGlobal);
    VariableSlot resolve(const std::string& name, bool assigned);
    const VariableSlot* findLocal(const std::string& name) const;
    bool assignmentFollows();
    std::unique_ptr<Place> place(bool assigned);

    // Expressions (parserExpressions.cpp)
    ExpressionRef expression();
    ExpressionRef conditional();
    ExpressionRef logical(bool isAnd);
    ExpressionRef binary(int level);
    bool acceptOperator(int level, Operator& found);
    ExpressionRef unary();
    ExpressionRef step(bool before);
    ExpressionRef placeOrComponent();
    ExpressionRef assignment(std::unique_ptr<Place> target);
    ExpressionRef component(ExpressionRef vector);
    ExpressionRef primary();
    ExpressionRef named();
    ExpressionRef parenthesized();
    ExpressionRef angled();
    std::vector<ExpressionRef> angledRow();
    ExpressionRef arrayLiteral();
    ExpressionRef cast(Type type);
    ExpressionRef catching();
    std::vector<ExpressionRef> arguments();
    template <class Node>
    ExpressionRef sized(std::unique_ptr<Node> node, int heightBelow);

    // Commands (parserCommands.cpp)
    ExpressionRef command(bool inBackquotes);
    ExpressionRef backquoted();
    void words(std::vector<Call::Part>& parts, bool inBackquotes);
    bool word(std::vector<Call::Part>& parts, bool inBackquotes);
    bool dashWord(std::vector<Call::Part>& parts);
    Call::Part plainWord();
    bool seesWordAfterParenthesis(bool inBackquotes);
    ExpressionRef callOf(std::string name, std::vector<Call::Part> parts);

    Scanner scanner;
    const std::string file;
    const StackLimit& stack;
    std::function<bool(const std::string&)> existsGlobally;
    std::set<std::string> newGlobals;
    Scope topScope;
    Scope* scope = &topScope;
    int loopDepth = 0; ///< of loops and switches around the position, within the procedure
    Script script;
};

} // namespace host::mel
