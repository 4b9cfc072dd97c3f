#include "tools/selectTool.h"

#include <maya/MPxSelectionContext.h>

namespace host {

namespace {

class SelectTool final : public MPxSelectionContext {
public:
    SelectTool()
    {
        setTitleString("Select Tool");
        setImage("aselect.png", kImage1);
        setAllowPreSelectHilight();
        setAllowSoftSelect();
        setAllowSymmetry();
    }

    void toolOnSetup(MEvent&) override
    {
        setHelpString("Select Tool: Use select tool to select objects and components.");
    }
    void getClassName(MString& name) const override { name = "selectTool"; }
};

} // namespace

std::unique_ptr<MPxContext> makeSelectTool()
{
    return std::make_unique<SelectTool>();
}

} // namespace host
