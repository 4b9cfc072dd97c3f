#include "plugins/syntax.h"
#include "types/api.h"

#include <maya/MArgDatabase.h>
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

MArgDatabase::MArgDatabase() = default;

MArgDatabase::MArgDatabase(const MSyntax& syntax, const MArgList& argList, MStatus* status)
    : MArgParser(syntax, argList, status)
{}

MArgDatabase::MArgDatabase(const MArgDatabase& rhs) = default;
MArgDatabase::~MArgDatabase() = default;
MArgDatabase& MArgDatabase::operator=(const MArgDatabase& rhs) = default;

MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int index, MSelectionList& result) const
{
    MString name;
    const MStatus read = getFlagArgument(flag, index, name);
    return read ? result.add(name) : read;
}

MStatus MArgDatabase::getCommandArgument(unsigned int index, MSelectionList& result) const
{
    MString name;
    const MStatus read = getCommandArgument(index, name);
    return read ? result.add(name) : read;
}

MStatus MArgDatabase::getObjects(MSelectionList& result) const
{
    MStringArray names;
    getObjects(names);
    MSelectionList found;
    for (unsigned int i = 0; i < names.length(); ++i) {
        const MStatus added = found.add(names[i]);
        if (!added)
            return added;
    }
    const bool selected = names.length() == 0 && host::Api::parsed(*this).syntax.selectionAsDefault;
    const MStatus status = selected ? MGlobal::getActiveSelectionList(found) : MStatus();
    if (status)
        result = found;
    return status;
}
