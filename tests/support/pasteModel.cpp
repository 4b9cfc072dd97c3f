// The pastes of the weight model: which copied point a target point takes, and what the modes make of it.
#include "support/weightModel.h"

#include <algorithm>
#include <cmath>

namespace testing_support {

namespace {

constexpr double kReach = 1000;

double distanceOf(const Point& a, const Point& b)
{
    const double x = a[0] - b[0], y = a[1] - b[1], z = a[2] - b[2];
    return std::sqrt(x * x + y * y + z * z);
}

/// The copied rows one after another, as one array: pastes between skins look values up in it by number.
Values flat(const Rows& rows)
{
    Values values;
    for (const Values& row : rows)
        values.insert(values.end(), row.begin(), row.end());
    return values;
}

} // namespace

/// Points are compared as they are before the active deformer, or else before their own skin, where skins are
/// known. Null: neither deforms the shape.
const Points* WeightModel::restOf(int deformer, bool skinKnown, int shape) const
{
    const ModelShape& known = shapes[at(shape)];
    const bool deformed = deformer >= 0 && deformers[at(deformer)].geometryOf(shape) >= 0;
    return deformed || (skinKnown && known.influences > 0) ? &known.rest : nullptr;
}

bool WeightModel::match(const EditModel& edit, const CopyModel& copy, const Piece& target,
                        MatchModel& found) const
{
    const bool skinKnown = isSkinMode(edit.settings.mode) || isLayerMode(edit.settings.mode);
    const Points* from = restOf(edit.deformer, skinKnown, target.shape);
    if (from == nullptr)
        return false;
    MatchModel::Match match{0, 0, 0};
    for (const int point : target.points) {
        double best = kReach;
        match.position = 0; // the object stays that of the point before
        match.vertex = 0;
        for (std::size_t object = 0; object < copy.pieces.size(); ++object) {
            const Points& to = *restOf(edit.deformer, copy.fromSkins, copy.pieces[object].shape);
            for (std::size_t k = 0; k < copy.pieces[object].points.size(); ++k) {
                const int vertex = copy.pieces[object].points[k];
                const double distance = distanceOf((*from)[at(point)], to[at(vertex)]);
                if (distance < best) {
                    best = distance;
                    match = {object, k, vertex};
                }
            }
        }
        found.matches.push_back(match);
    }
    return true;
}

PastedWeights WeightModel::pastedOn(const EditModel& edit, const CopyModel& copy, std::size_t place,
                                    const MatchModel& match) const
{
    if (edit.settings.perVertex && !isFloatMode(edit.settings.mode))
        return pastedPerVertex(edit, copy, place, match);
    PastedWeights pasted;
    const Piece& piece = edit.pieces[place];
    const auto refuse = [&pasted] {
        pasted.refused = true;
        return pasted;
    };
    if (edit.settings.mode == Mode::kSkin) {
        // Value j of every row is looked up by the match of the target's point j, with as many values per
        // copied point as the copied object at the target's place has influences.
        if (place >= copy.pieces.size())
            return refuse();
        const std::size_t columns = copy.weights[place].rows.front().size();
        if (match.matches.size() < columns || columns != at(shapes[at(piece.shape)].influences))
            return refuse();
        for (std::size_t j = 0; j < columns; ++j) {
            const Values values = flat(copy.weights[match.matches[j].object].rows);
            const std::size_t value = match.matches[j].position * columns + j;
            if (value >= values.size())
                return refuse();
            pasted.row.push_back(narrowed(values[value]));
        }
        return pasted;
    }
    if (!isLayerMode(edit.settings.mode)) {
        for (const MatchModel::Match& from : match.matches)
            pasted.numbers.push_back(narrowed(copy.weights[from.object].numbers[from.position]));
        return pasted;
    }
    const bool influences = edit.settings.mode == Mode::kInfluence;
    pasted.arrays = edit.old[place].arrays;
    for (auto& array : pasted.arrays)
        for (double& value : array.second)
            value = influences ? value : narrowed(value);
    for (std::size_t k = 0; k < match.matches.size(); ++k) {
        const MatchModel::Match& from = match.matches[k];
        if (influences) {
            for (auto& array : pasted.arrays) {
                const auto copied = copy.weights[from.object].arrays.find(array.first);
                if (copied == copy.weights[from.object].arrays.end() ||
                    at(from.vertex) >= copied->second.size())
                    return refuse();
                array.second[at(piece.points[k])] = copied->second[at(from.vertex)];
            }
            continue;
        }
        // The position counts in the last copied object, whichever was matched.
        const std::vector<int>& last = copy.pieces.back().points;
        const Values& copied = copy.weights[from.object].arrays.begin()->second;
        if (from.position >= last.size() || at(last[from.position]) >= copied.size())
            return refuse();
        pasted.arrays.begin()->second[at(piece.points[k])] = narrowed(copied[at(last[from.position])]);
    }
    return pasted;
}

/// A row of a copied shape's influences as one of another shape's, joint by joint. What the other shape lacks
/// makes its own grow in proportion. False when there is weight and none of it can go over.
bool WeightModel::carryOver(const Piece& from, const Values& source, int to, Values& row) const
{
    const std::vector<std::string>& theirs = shapes[at(from.shape)].joints;
    const std::vector<std::string>& mine = shapes[at(to)].joints;
    double all = 0, kept = 0;
    Values carried(mine.size());
    for (std::size_t j = 0; j < theirs.size(); ++j) {
        const auto found = std::find(mine.begin(), mine.end(), theirs[j]);
        all += source[j];
        if (found == mine.end())
            continue;
        carried[static_cast<std::size_t>(found - mine.begin())] = source[j];
        kept += source[j];
    }
    if (all > 0 && kept <= 0)
        return false;
    for (double& weight : carried)
        weight *= kept > 0 ? all / kept : 1;
    row = carried;
    return true;
}

PastedWeights WeightModel::pastedPerVertex(const EditModel& edit, const CopyModel& copy, std::size_t place,
                                           const MatchModel& match) const
{
    PastedWeights pasted;
    const Piece& piece = edit.pieces[place];
    pasted.arrays = edit.old[place].arrays;
    pasted.rows = edit.old[place].rows;
    bool any = false;
    for (std::size_t k = 0; k < match.matches.size(); ++k) {
        const MatchModel::Match& from = match.matches[k];
        const Piece& source = copy.pieces[from.object];
        const OldWeights& theirs = copy.weights[from.object];
        const std::size_t to = at(piece.points[k]);
        if (edit.settings.mode == Mode::kBlend) {
            pasted.numbers.push_back(theirs.numbers[from.position]);
            any = true;
        } else if (edit.settings.mode == Mode::kSkin) {
            any |= carryOver(source, theirs.rows[from.position], piece.shape, pasted.rows[k]);
        } else if (edit.settings.mode == Mode::kInfluence) {
            Values row, copied;
            for (const auto& array : theirs.arrays)
                copied.push_back(array.second[at(from.vertex)]);
            if (!carryOver(source, copied, piece.shape, row))
                continue;
            any = true;
            for (std::size_t j = 0; j < row.size(); ++j)
                pasted.arrays.at(std::to_string(j))[to] = row[j];
        } else {
            const Values& copied = theirs.arrays.begin()->second;
            pasted.arrays.begin()->second[to] = copied[at(from.vertex)];
            any = true;
        }
    }
    pasted.refused = !any;
    return pasted;
}

bool WeightModel::preparePaste(EditModel& edit, const CopyModel& copy) const
{
    const Mode mode = edit.settings.mode;
    edit.pasted.resize(edit.pieces.size());
    const bool plain = !isLayerMode(mode) && mode != Mode::kSkin;
    const bool layerNumbers = mode == Mode::kMask || mode == Mode::kLayerBlend;
    const bool copiedNumbers = copy.mode == Mode::kMask || copy.mode == Mode::kLayerBlend;
    if ((plain && isLayerMode(copy.mode)) || (layerNumbers && !copiedNumbers))
        return false;
    // A skin paste of another mode's copy goes on with nothing to write, and fails at that.
    if (mode == Mode::kSkin && copy.mode != Mode::kSkin)
        return false;
    bool known = mode != Mode::kInfluence || copy.mode == Mode::kInfluence;
    for (const Piece& piece : copy.pieces)
        known = known && restOf(edit.deformer, copy.fromSkins, piece.shape) != nullptr;
    for (std::size_t place = 0; place < edit.pieces.size(); ++place) {
        MatchModel found;
        PastedWeights& pasted = edit.pasted[place];
        if (known && match(edit, copy, edit.pieces[place], found))
            pasted = pastedOn(edit, copy, place, found);
        else
            pasted.refused = true;
        // Every object starts from what all of them held before the paste: of several only the last one
        // keeps what it is given.
        const bool resets = known && mode == Mode::kInfluence && !edit.settings.perVertex;
        for (std::size_t earlier = 0; resets && earlier < place; ++earlier)
            edit.pasted[earlier].arrays = edit.old[earlier].arrays;
    }
    return std::any_of(edit.pasted.begin(), edit.pasted.end(),
                       [](const PastedWeights& pasted) { return !pasted.refused; });
}

void WeightModel::paste(const EditModel& edit)
{
    for (std::size_t place = 0; place < edit.pieces.size(); ++place) {
        const Piece& piece = edit.pieces[place];
        const PastedWeights& pasted = edit.pasted[place];
        if (pasted.refused)
            continue;
        for (const auto& array : pasted.arrays)
            writeLayer(piece.shape, layerId(edit.settings, piece.shape), array.first, array.second);
        for (std::size_t k = 0; k < piece.points.size() && !isLayerMode(edit.settings.mode); ++k)
            if (edit.settings.mode == Mode::kSkin)
                weights.skin[at(piece.shape)][at(piece.points[k])] =
                    pasted.rows.empty() ? pasted.row : pasted.rows[k];
            else
                (*numbers(edit, piece.shape))[at(piece.points[k])] = pasted.numbers[k];
    }
}

void WeightModel::undoPaste(const EditModel& edit)
{
    for (std::size_t place = 0; place < edit.pieces.size(); ++place) {
        if (edit.pasted[place].refused)
            continue;
        const Piece& piece = edit.pieces[place];
        for (const auto& array : edit.old[place].arrays)
            writeLayer(piece.shape, layerId(edit.settings, piece.shape), array.first, array.second);
        for (std::size_t k = 0; k < piece.points.size() && !isLayerMode(edit.settings.mode); ++k)
            if (edit.settings.mode == Mode::kSkin)
                weights.skin[at(piece.shape)][at(piece.points[k])] = edit.old[place].rows[k];
            else
                (*numbers(edit, piece.shape))[at(piece.points[k])] = edit.old[place].numbers[k];
    }
}

} // namespace testing_support
