#pragma once

#include "common.h"

#include <maya/MArgParser.h>
#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>
#include <maya/MStatus.h>

class morvaneContext;

/// The command "morvaneContext": makes the tool, edits its settings, copies and pastes, and answers queries.
/// It does not own the context; the platform does. Flags are applied and answered in a fixed order; an edit
/// that fails ends there, with what came before applied.
class morvaneContextCommand : public MPxContextCommand {
public:
    ~morvaneContextCommand() override;
    static void* creator();

    MStatus doEditFlags() override;
    MStatus doQueryFlags() override;
    MPxContext* makeObj() override;
    MStatus appendSyntax() override;

private:
    MStatus editFlags();
    MStatus queryFlags();

    morvaneContext* context = nullptr;
};
