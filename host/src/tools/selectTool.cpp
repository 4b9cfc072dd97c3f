#include "tools/selectTool.h"

#include "tools/toolApi.h"

#include <maya/MPxSelectionContext.h>

namespace host {

namespace {

class SelectTool final : public MPxSelectionContext {
public:
    SelectTool()
    {
        setTitleString("Select Tool");
        // Said before the tool is ever current: the status trace is for what plug-ins say.
        setHelpString("Select Tool: Use select tool to select objects and components.");
        setImage("aselect.png", kImage1);
        setAllowPreSelectHilight();
        setAllowSoftSelect();
        setAllowSymmetry();
        ToolApi::gesture(*this)->movesNothing = true;
    }

    void toolOnSetup(MEvent&) override {}
    void getClassName(MString& name) const override { name = "selectTool"; }
};

} // namespace

std::unique_ptr<MPxContext> makeSelectTool()
{
    return std::make_unique<SelectTool>();
}

} // namespace host
