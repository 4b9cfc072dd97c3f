#pragma once

#include <maya/MArgList.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>
#include <maya/MTypes.h>

#include <memory>

namespace host {
struct Api;
struct ParsedArgs;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// Arguments sorted by a syntax. The status of the constructor tells whether they fit it.
class MAYA_HOST_EXPORT MArgParser {
public:
    MArgParser();
    MArgParser(const MSyntax& syntax, const MArgList& argList, MStatus* status = nullptr);
    MArgParser(const MArgParser& rhs);
    virtual ~MArgParser();
    MArgParser& operator=(const MArgParser& rhs);

    /// Short or long name, with its dash.
    bool isFlagSet(const char* flag, MStatus* status = nullptr) const;
    bool isEdit(MStatus* status = nullptr) const;
    bool isQuery(MStatus* status = nullptr) const;
    unsigned int numberOfFlagsUsed() const;
    unsigned int numberOfFlagUses(const char* flag) const;
    /// The first use of the flag; index is the place among the arguments of that use.
    MStatus getFlagArgument(const char* flag, unsigned int index, bool& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, int& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, double& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, MString& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, unsigned int& result) const;
    bool flagArgumentBool(const char* flag, unsigned int index, MStatus* status = nullptr) const;
    int flagArgumentInt(const char* flag, unsigned int index, MStatus* status = nullptr) const;
    double flagArgumentDouble(const char* flag, unsigned int index, MStatus* status = nullptr) const;
    MString flagArgumentString(const char* flag, unsigned int index, MStatus* status = nullptr) const;
    /// The i-th use of a multi-use flag.
    MStatus getFlagArgumentPosition(const char* flag, unsigned int i, unsigned int& position) const;
    MStatus getFlagArgumentList(const char* flag, unsigned int i, MArgList& args) const;
    MStatus getCommandArgument(unsigned int index, bool& result) const;
    MStatus getCommandArgument(unsigned int index, int& result) const;
    MStatus getCommandArgument(unsigned int index, double& result) const;
    MStatus getCommandArgument(unsigned int index, MString& result) const;
    bool commandArgumentBool(unsigned int index, MStatus* status = nullptr) const;
    int commandArgumentInt(unsigned int index, MStatus* status = nullptr) const;
    double commandArgumentDouble(unsigned int index, MStatus* status = nullptr) const;
    MString commandArgumentString(unsigned int index, MStatus* status = nullptr) const;
    MStatus getObjects(MStringArray& result) const;
    static const char* className() { return "MArgParser"; }

private:
    friend struct host::Api;
    std::shared_ptr<const host::ParsedArgs> parsed;
};

MAYA_HOST_NAMESPACE_CLOSE
