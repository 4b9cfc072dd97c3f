#include "messages.h"
#include "plugins/syntax.h"
#include "session.h"
#include "types/api.h"
#include "types/error.h"

#include <maya/MArgList.h>
#include <maya/MArgParser.h>
#include <maya/MStringArray.h>

#include <utility>

namespace {

using host::ParsedArgs;
using host::mel::Value;

/// Stores what a conversion gave; a value that cannot be read so leaves the target alone.
template <class Read, class Target>
MStatus store(const Read& read, Target& target)
{
    if (!read)
        return MStatus::kInvalidParameter;
    target = static_cast<Target>(*read);
    return MStatus::kSuccess;
}

MStatus readAs(const Value& value, bool& target)
{
    return store(host::argumentBool(value), target);
}

MStatus readAs(const Value& value, int& target)
{
    return store(host::argumentInt(value), target);
}

MStatus readAs(const Value& value, unsigned int& target)
{
    return store(host::argumentInt(value), target);
}

MStatus readAs(const Value& value, double& target)
{
    return store(host::argumentDouble(value), target);
}

MStatus readAs(const Value& value, MString& target)
{
    const auto text = host::argumentText(value);
    if (text)
        target = host::Api::wrap(*text);
    return text ? MStatus::kSuccess : MStatus::kInvalidParameter;
}

template <class Target>
MStatus readFlag(const ParsedArgs& parsed, const char* flag, unsigned int index, Target& target)
{
    if (!flag || !parsed.syntax.find(flag))
        return MStatus::kInvalidParameter;
    const ParsedArgs::Use* use = parsed.use(flag);
    if (!use || index >= use->values.size())
        return MStatus::kFailure;
    return readAs(use->values[index], target);
}

template <class Target>
MStatus readArgument(const ParsedArgs& parsed, unsigned int index, Target& target)
{
    if (index >= parsed.arguments.size())
        return MStatus::kFailure;
    return readAs(parsed.arguments[index], target);
}

const std::shared_ptr<const ParsedArgs>& nothing()
{
    static const auto kEmpty = std::make_shared<const ParsedArgs>();
    return kEmpty;
}

} // namespace

MArgParser::MArgParser() : parsed(nothing()) {}

MArgParser::MArgParser(const MSyntax& syntax, const MArgList& argList, MStatus* status) : parsed(nothing())
{
    try {
        parsed = host::parseArguments(host::Api::syntax(syntax), host::Api::arguments(argList), {});
        host::report(status, MStatus::kSuccess);
    } catch (const host::Error& error) {
        if (host::Session* session = host::Session::currentOrNull())
            session->messages().error(error.what());
        host::report(status, MStatus::kFailure);
    }
}

MArgParser::MArgParser(const MArgParser& rhs) = default;
MArgParser::~MArgParser() = default;
MArgParser& MArgParser::operator=(const MArgParser& rhs) = default;

bool MArgParser::isFlagSet(const char* flag, MStatus* status) const
{
    const bool known = flag && parsed->syntax.find(flag);
    host::report(status, known ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return known && parsed->use(flag);
}

bool MArgParser::isEdit(MStatus* status) const
{
    host::report(status, MStatus::kSuccess);
    return parsed->edit;
}

bool MArgParser::isQuery(MStatus* status) const
{
    host::report(status, MStatus::kSuccess);
    return parsed->query;
}

unsigned int MArgParser::numberOfFlagsUsed() const
{
    return static_cast<unsigned int>(parsed->uses.size());
}

unsigned int MArgParser::numberOfFlagUses(const char* flag) const
{
    return flag ? parsed->useCount(flag) : 0;
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, bool& result) const
{
    return readFlag(*parsed, flag, index, result);
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, int& result) const
{
    return readFlag(*parsed, flag, index, result);
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, double& result) const
{
    return readFlag(*parsed, flag, index, result);
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, MString& result) const
{
    return readFlag(*parsed, flag, index, result);
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, unsigned int& result) const
{
    return readFlag(*parsed, flag, index, result);
}

bool MArgParser::flagArgumentBool(const char* flag, unsigned int index, MStatus* status) const
{
    bool value = false;
    host::report(status, getFlagArgument(flag, index, value));
    return value;
}

int MArgParser::flagArgumentInt(const char* flag, unsigned int index, MStatus* status) const
{
    int value = 0;
    host::report(status, getFlagArgument(flag, index, value));
    return value;
}

double MArgParser::flagArgumentDouble(const char* flag, unsigned int index, MStatus* status) const
{
    double value = 0.0;
    host::report(status, getFlagArgument(flag, index, value));
    return value;
}

MString MArgParser::flagArgumentString(const char* flag, unsigned int index, MStatus* status) const
{
    MString value;
    host::report(status, getFlagArgument(flag, index, value));
    return value;
}

MStatus MArgParser::getFlagArgumentPosition(const char* flag, unsigned int i, unsigned int& position) const
{
    const ParsedArgs::Use* use = flag ? parsed->use(flag, i) : nullptr;
    if (!use)
        return MStatus::kFailure;
    position = use->position;
    return MStatus::kSuccess;
}

MStatus MArgParser::getFlagArgumentList(const char* flag, unsigned int i, MArgList& args) const
{
    const ParsedArgs::Use* use = flag ? parsed->use(flag, i) : nullptr;
    if (!use)
        return MStatus::kFailure;
    host::Api::arguments(args).values = use->values;
    return MStatus::kSuccess;
}

MStatus MArgParser::getCommandArgument(unsigned int index, bool& result) const
{
    return readArgument(*parsed, index, result);
}

MStatus MArgParser::getCommandArgument(unsigned int index, int& result) const
{
    return readArgument(*parsed, index, result);
}

MStatus MArgParser::getCommandArgument(unsigned int index, double& result) const
{
    return readArgument(*parsed, index, result);
}

MStatus MArgParser::getCommandArgument(unsigned int index, MString& result) const
{
    return readArgument(*parsed, index, result);
}

bool MArgParser::commandArgumentBool(unsigned int index, MStatus* status) const
{
    bool value = false;
    host::report(status, getCommandArgument(index, value));
    return value;
}

int MArgParser::commandArgumentInt(unsigned int index, MStatus* status) const
{
    int value = 0;
    host::report(status, getCommandArgument(index, value));
    return value;
}

double MArgParser::commandArgumentDouble(unsigned int index, MStatus* status) const
{
    double value = 0.0;
    host::report(status, getCommandArgument(index, value));
    return value;
}

MString MArgParser::commandArgumentString(unsigned int index, MStatus* status) const
{
    MString value;
    host::report(status, getCommandArgument(index, value));
    return value;
}

MStatus MArgParser::getObjects(MStringArray& result) const
{
    result = host::Api::wrap(parsed->objects);
    return MStatus::kSuccess;
}
