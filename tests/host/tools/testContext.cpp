#include "testContext.h"

#include <maya/MArgParser.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

namespace testing_support {

std::vector<std::string> NotingContext::notes;
std::function<void()> NotingContext::onPress;

MStatus NotingContext::note(const std::string& step, MEvent& event)
{
    short x = 0, y = 0;
    event.getPosition(x, y);
    std::string text = step + " " + std::to_string(x) + " " + std::to_string(y);
    MStatus hasButton;
    const MEvent::MouseButtonType button = event.mouseButton(&hasButton);
    if (hasButton)
        text += button == MEvent::kLeftMouse ? " left" : " middle";
    if (event.isModifierShift())
        text += " shift";
    if (event.isModifierControl())
        text += " control";
    notes.push_back(text);
    return MStatus::kSuccess;
}

void NotingContext::toolOnSetup(MEvent&)
{
    notes.push_back("on");
    setHelpString("Press to note.");
}

MStatus NotingContext::doPress(MEvent& event)
{
    const MStatus status = note("press", event);
    if (onPress)
        onPress();
    return status;
}

MPxContext* NotingCommand::makeObj()
{
    return context = new NotingContext;
}

MStatus NotingCommand::appendSyntax()
{
    MSyntax flags = syntax();
    return flags.addFlag("-st", "-strength", MSyntax::kDouble);
}

MStatus NotingCommand::doEditFlags()
{
    if (!parser().isFlagSet("-st"))
        return MStatus::kSuccess;
    const double strength = parser().flagArgumentDouble("-st", 0);
    if (strength < 0.0)
        return MStatus::kFailure;
    context->strength = strength;
    return MStatus::kSuccess;
}

MStatus NotingCommand::doQueryFlags()
{
    return setResult(context->strength);
}

} // namespace testing_support
