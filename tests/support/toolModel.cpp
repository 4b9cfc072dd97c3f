#include "support/toolModel.h"

#include <algorithm>
#include <set>
#include <utility>

namespace testing_support {

namespace {

Piece* pieceOn(Selection& list, int shape)
{
    const auto found =
        std::find_if(list.begin(), list.end(), [shape](const Piece& piece) { return piece.shape == shape; });
    return found == list.end() ? nullptr : &*found;
}

enum class Combine { kAdd, kToggle, kRemove };

std::vector<int> combinedPoints(const std::vector<int>& old, const std::vector<int>& change, Combine how)
{
    std::set<int> points(old.begin(), old.end());
    for (const int point : change) {
        const bool drops = how == Combine::kRemove || (how == Combine::kToggle && points.count(point) > 0);
        if (drops)
            points.erase(point);
        else
            points.insert(point);
    }
    return {points.begin(), points.end()};
}

} // namespace

Pieces ToolModel::edited() const
{
    return scene.edited(settings, active, rich());
}

bool ToolModel::namesDeformer() const
{
    return settings.mode != Mode::kSkin && !isLayerMode(settings.mode);
}

void ToolModel::setMode(Mode mode)
{
    settings.mode = mode;
}

void ToolModel::setDeformer(const std::string& name)
{
    settings.deformer = name;
    if (namesDeformer())
        active = scene.deformerNamed(name);
}

void ToolModel::setActive(Selection list)
{
    selection = std::move(list);
    overridden = {};
    hasOverride = false;
}

void ToolModel::setRich(RichPieces rich)
{
    hasOverride = !rich.empty();
    overridden = std::move(rich);
}

void ToolModel::restore(const SelectionSnapshot& earlier)
{
    selection = earlier.list;
    overridden = earlier.overridden;
    hasOverride = earlier.hasOverride;
}

/// As a press in select mode ends: shift toggles, control removes, both add, none replaces.
Selection ToolModel::combined(Selection list, const Selection& change, bool shift, bool control)
{
    if (!shift && !control)
        return change;
    const Combine how = shift && control ? Combine::kAdd : shift ? Combine::kToggle : Combine::kRemove;
    for (const Piece& piece : change) {
        Piece* const mine = pieceOn(list, piece.shape);
        if (mine != nullptr)
            mine->points = combinedPoints(mine->points, piece.points, how);
        else if (how != Combine::kRemove)
            list.push_back(piece);
    }
    list.erase(
        std::remove_if(list.begin(), list.end(), [](const Piece& piece) { return piece.points.empty(); }),
        list.end());
    return list;
}

ToolModel::Entry ToolModel::symmetrize()
{
    if (!reach.options.symmetry)
        return {};
    const Selection both = reach.symmetrized(selection);
    if (both == selection)
        return {};
    Step step;
    step.kind = Step::kScript;
    step.before = snapshot();
    setActive(both);
    step.after = snapshot();
    return {step};
}

void ToolModel::push(Entry entry)
{
    if (entry.empty())
        return;
    entries.resize(done);
    entries.push_back(std::move(entry));
    ++done;
}

EditModel ToolModel::newEdit() const
{
    EditModel edit;
    edit.settings = settings;
    edit.deformer = active;
    edit.pieces = edited();
    return edit;
}

bool ToolModel::press(const Selection& pick, bool shift, bool control, bool highlighted)
{
    if (namesDeformer())
        active = scene.deformerNamed(settings.deformer);
    pressed = Spot();
    probing = probeCosts = false;
    command = Step();
    picked = pick;
    shiftHeld = shift;
    controlHeld = control;
    selectionChanged = false;
    command.oldList = selection;
    command.oldRich = rich();
    if (!highlighted)
        setActive(selection); // the pick ends a rich selection that was set
    if (shift)
        return false;
    const auto isHeld = [&] {
        const Piece* const mine = pick.empty() ? nullptr : pieceOn(selection, pick[0].shape);
        return mine != nullptr &&
               std::binary_search(mine->points.begin(), mine->points.end(), pick[0].points[0]);
    };
    if (!isHeld()) {
        setActive(control ? combined(selection, pick, true, true) : pick);
        selectionChanged = true;
        push(symmetrize());
    }
    if (pick.empty())
        return false;
    pressed = {pick[0].shape, pick[0].points[0]};
    command.edit = newEdit();
    probing = !command.edit.pieces.empty() && scene.read(command.edit);
    probeCosts = probing && scene.probe(command.edit, pressed);
    return true;
}

EditModel ToolModel::editOf(const Spot& spot) const
{
    EditModel edit;
    edit.settings = settings;
    edit.deformer = namesDeformer() ? scene.deformerNamed(settings.deformer) : active;
    edit.pieces = scene.edited(settings, edit.deformer, {{{spot.shape, {spot.point}, {}}}, {}});
    return edit;
}

void ToolModel::releaseStroke(double offset, bool moved)
{
    const bool taken = (offset != 0 || moved) && !editOf(pressed).pieces.empty();
    if (probing && (isLayerMode(settings.mode) || (probeCosts && !taken)))
        ++leftovers;
    if (offset == 0) {
        if (moved) { // what the drag has written is taken back
            scene.stroke(command.edit, true);
            scene.restore(command.edit);
        }
        if (selectionChanged)
            recordSelection();
        return;
    }
    command.strokes = true;
    command.edit.offset = offset;
    scene.stroke(command.edit, true);
    command.selects = selectionChanged;
    command.newList = selection;
    command.newRich = rich();
    push({command});
}

void ToolModel::releaseClick()
{
    setActive(combined(selection, picked, shiftHeld, controlHeld));
    push(symmetrize());
    recordSelection();
}

void ToolModel::releaseMarquee(const Selection& inside)
{
    setActive(combined(selection, inside, shiftHeld, controlHeld));
    recordSelection();
}

void ToolModel::recordSelection()
{
    if (selection.empty()) {
        // A script command that comes after the change: undo cannot bring the former selection back.
        selectByScript({});
        return;
    }
    command.selects = true;
    command.newList = selection;
    command.newRich = rich();
    setActive(command.newList);
    setRich(command.newRich);
    Entry entry = {command};
    const Entry mirrored = symmetrize();
    entry.insert(entry.end(), mirrored.begin(), mirrored.end());
    push(std::move(entry));
}

void ToolModel::selectByScript(const Selection& after)
{
    Step step;
    step.kind = Step::kScript;
    step.before = snapshot();
    setActive(after);
    step.after = snapshot();
    push({step});
}

void ToolModel::setReach(const ReachOptions& options)
{
    Step step;
    step.kind = Step::kReach;
    step.reachBefore = reach.options;
    step.reachAfter = options;
    reach.options = options;
    setActive(selection);
    push({step});
}

void ToolModel::copy()
{
    EditModel edit = newEdit();
    copied.pieces.clear();
    copied.weights.clear();
    if (!edit.pieces.empty() && !scene.read(edit))
        return; // the mode of the copy before stays
    copied.mode = settings.mode;
    copied.pieces = edit.pieces;
    copied.weights = edit.old;
    copied.fromSkins = isSkinMode(settings.mode) || isLayerMode(settings.mode);
}

void ToolModel::paste()
{
    Step step;
    step.pastes = true;
    step.edit = newEdit();
    if (copied.pieces.empty() || step.edit.pieces.empty() || !scene.read(step.edit) ||
        !scene.preparePaste(step.edit, copied))
        return;
    scene.paste(step.edit);
    push({step});
    leftovers += isLayerMode(settings.mode) ? 1 : 0;
}

void ToolModel::undo()
{
    const Entry& entry = entries[--done];
    for (auto step = entry.rbegin(); step != entry.rend(); ++step) {
        if (step->kind == Step::kScript)
            restore(step->before);
        if (step->kind == Step::kReach) {
            reach.options = step->reachBefore;
            setActive(selection);
        }
        if (step->selects) {
            setActive(step->oldList);
            setRich(step->oldRich);
        }
        if (step->strokes)
            scene.undoStroke(step->edit);
        if (step->pastes)
            scene.undoPaste(step->edit);
    }
}

bool ToolModel::redoesAlike() const
{
    const Entry& entry = entries[done];
    return std::all_of(entry.begin(), entry.end(),
                       [this](const Step& step) { return !step.strokes || scene.redoesAlike(step.edit); });
}

void ToolModel::redo()
{
    const Entry& entry = entries[done++];
    for (const Step& step : entry) {
        if (step.kind == Step::kScript)
            setActive(step.after.list);
        if (step.kind == Step::kReach) {
            reach.options = step.reachAfter;
            setActive(selection);
        }
        if (step.selects) {
            setActive(step.newList);
            setRich(step.newRich);
        }
        if (step.strokes)
            scene.stroke(step.edit, false);
        if (step.pastes)
            scene.paste(step.edit);
    }
}

} // namespace testing_support
