#include "mel/functions.h"

#include "types/error.h"

namespace host::mel {

Value& FunctionCall::array(int index) const
{
    Value* const variable = at(index).variable;
    if (!variable || !isArray(variable->type()))
        throw Error("Argument " + std::to_string(index + 1) + " of " + name + " must be an array variable.");
    return *variable;
}

StringArray& FunctionCall::textArray(int index) const
{
    Value& variable = array(index);
    if (variable.type() != Type::kStringArray)
        throw Error("Argument " + std::to_string(index + 1) + " of " + name +
                    " must be a string[] variable.");
    return variable.get<StringArray>();
}

} // namespace host::mel
