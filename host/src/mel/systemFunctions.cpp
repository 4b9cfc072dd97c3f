#include "mel/functions.h"
#include "mel/interpreter.h"
#include "mel/scriptError.h"
#include "messages.h"
#include "session.h"

#include <cstdlib>

namespace host::mel {

namespace {

Value print(FunctionCall& call)
{
    call.interpreter.session().messages().print(call.value(0).printed());
    return {};
}

/// All arguments, blanks between them.
std::string joinedText(const FunctionCall& call)
{
    std::string text;
    for (int i = 0; i < call.count(); ++i)
        text.append(i == 0 ? "" : " ").append(call.text(i));
    return text;
}

Value eval(FunctionCall& call)
{
    return call.interpreter.execute(joinedText(call));
}

Value evalEcho(FunctionCall& call)
{
    const std::string text = joinedText(call);
    call.interpreter.session().messages().info(text);
    return call.interpreter.execute(text);
}

Value source(FunctionCall& call)
{
    call.interpreter.source(call.text(0));
    return {};
}

Value exists(FunctionCall& call)
{
    return call.interpreter.knows(call.text(0));
}

Value whatIs(FunctionCall& call)
{
    return call.interpreter.whatIs(call.text(0));
}

Value getEnvironment(FunctionCall& call)
{
    call.interpreter.requireOutside("getenv");
    const char* const text = std::getenv(call.text(0).c_str());
    return text ? text : "";
}

Value putEnvironment(FunctionCall& call)
{
    call.interpreter.requireOutside("putenv");
    setenv(call.text(0).c_str(), call.text(1).c_str(), 1);
    return {};
}

} // namespace

void addSystemFunctions(FunctionTable& table)
{
    table.insert({
        {"print", {1, 1, print}},
        {"eval", {1, Function::kAnyNumber, eval}},
        {"evalEcho", {1, Function::kAnyNumber, evalEcho}},
        {"source", {1, 1, source}},
        {"exists", {1, 1, exists}},
        {"whatIs", {1, 1, whatIs}},
        {"getenv", {1, 1, getEnvironment}},
        {"putenv", {2, 2, putEnvironment}},
    });
}

} // namespace host::mel
