#pragma once

#include <maya/MArgParser.h>
#include <maya/MSelectionList.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// Arguments sorted by a syntax, with selection items resolved.
class MAYA_HOST_EXPORT MArgDatabase : public MArgParser {
public:
    MArgDatabase();
    MArgDatabase(const MSyntax& syntax, const MArgList& argList, MStatus* status = nullptr);
    MArgDatabase(const MArgDatabase& rhs);
    ~MArgDatabase();
    MArgDatabase& operator=(const MArgDatabase& rhs);

    using MArgParser::getCommandArgument;
    using MArgParser::getFlagArgument;
    using MArgParser::getObjects;

    MStatus getFlagArgument(const char* flag, unsigned int index, MSelectionList& result) const;
    MStatus getCommandArgument(unsigned int index, MSelectionList& result) const;
    MStatus getObjects(MSelectionList& result) const;
    static const char* className() { return "MArgDatabase"; }

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
