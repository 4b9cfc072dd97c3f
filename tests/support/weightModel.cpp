#include "support/weightModel.h"

#include <algorithm>
#include <cmath>

namespace testing_support {

namespace {

constexpr double kStep = 0.005;

double within(double number, double low, double high)
{
    return std::min(std::max(number, low), high);
}

/// While dragging: skins stay in 0..1; elsewhere the lower clamp, then the upper one, then single precision.
double liveWeight(const Settings& settings, double old, double change)
{
    double weight = old + change;
    if (!isFloatMode(settings.mode))
        return within(weight, 0, 1);
    if (settings.clampMin)
        weight = std::max(weight, settings.low);
    if (settings.clampMax)
        weight = std::min(weight, settings.high);
    return narrowed(weight);
}

/// When redone: in every mode the upper clamp, then the lower one, in the mode's precision at each step.
double redoneWeight(const Settings& settings, double old, double change)
{
    const auto kept = [&](double weight) { return isFloatMode(settings.mode) ? narrowed(weight) : weight; };
    double weight = kept(old + change);
    if (settings.clampMax)
        weight = kept(std::min(weight, settings.high));
    if (settings.clampMin)
        weight = kept(std::max(weight, settings.low));
    return weight;
}

double changeAt(const EditModel& edit, const Piece& piece, std::size_t point)
{
    return edit.offset * (piece.falloff.empty() ? 1.0 : static_cast<double>(piece.falloff[point]));
}

std::string key(int layer, const std::string& target)
{
    return std::to_string(layer) + " " + target;
}

/// The arrays that an edit of a mode reads and writes.
std::vector<std::string> targetsOf(Mode mode, const ModelShape& shape)
{
    if (mode != Mode::kInfluence)
        return {mode == Mode::kMask ? "mask" : "dq"};
    std::vector<std::string> targets;
    for (int influence = 0; influence < shape.influences; ++influence)
        targets.push_back(std::to_string(influence));
    return targets;
}

/// Adds a piece to the one on its shape, if there is one: points of both have the falloff of the later.
void unite(Pieces& pieces, const Piece& part)
{
    const auto same = std::find_if(pieces.begin(), pieces.end(),
                                   [&](const Piece& piece) { return piece.shape == part.shape; });
    if (same == pieces.end()) {
        pieces.push_back(part);
        return;
    }
    std::map<int, float> points;
    for (const Piece* piece : {static_cast<const Piece*>(&*same), &part})
        for (std::size_t k = 0; k < piece->points.size(); ++k)
            points[piece->points[k]] = piece->falloff.empty() ? 1.0F : piece->falloff[k];
    *same = {part.shape, {}, {}};
    for (const auto& [point, falloff] : points) {
        same->points.push_back(point);
        same->falloff.push_back(falloff);
    }
}

/// What the others become when one influence of a layer goes from `old` to `now` at one vertex.
void shareOut(std::vector<double*> others, double old, double now, bool distribute)
{
    double sum = 0;
    for (const double* other : others)
        sum += *other;
    double taken = 0;
    if (now > old && sum + now > 1)
        taken = 1 - (sum + now); // negative: they grow, as they always did
    else if (now < old && distribute)
        taken = now - old;
    for (double* other : others)
        if (taken != 0 && sum != 0)
            *other -= taken * (*other / sum);
}

} // namespace

const char* modeName(Mode mode)
{
    switch (mode) {
    case Mode::kDefault:
        return "default";
    case Mode::kPlug:
        return "plug";
    case Mode::kSkin:
        return "skinCluster";
    case Mode::kBlend:
        return "dualQuaternion";
    case Mode::kTarget:
        return "blendShapeTarget";
    case Mode::kBase:
        return "blendShapeBase";
    case Mode::kMask:
        return "ngSkinToolsMask";
    case Mode::kLayerBlend:
        return "ngSkinToolsDualQuaternion";
    default:
        return "ngSkinToolsInfluence";
    }
}

bool isFloatMode(Mode mode)
{
    return mode == Mode::kDefault || mode == Mode::kPlug || mode == Mode::kTarget || mode == Mode::kBase;
}

bool isSkinMode(Mode mode)
{
    return mode == Mode::kSkin || mode == Mode::kBlend;
}

bool isLayerMode(Mode mode)
{
    return mode == Mode::kMask || mode == Mode::kLayerBlend || mode == Mode::kInfluence;
}

int ModelDeformer::geometryOf(int shape) const
{
    const auto found = std::find(geometries.begin(), geometries.end(), shape);
    return found == geometries.end() ? -1 : static_cast<int>(found - geometries.begin());
}

int WeightModel::deformerNamed(const std::string& name) const
{
    for (std::size_t index = 0; index < deformers.size(); ++index)
        if (deformers[index].name == name)
            return static_cast<int>(index);
    return -1;
}

Values WeightModel::withRoom(Values row, std::size_t influence, double weight)
{
    double others = 0;
    for (std::size_t column = 0; column < row.size(); ++column)
        others += column == influence ? 0 : row[column];
    for (std::size_t column = 0; column < row.size(); ++column)
        if (column == influence)
            row[column] = weight;
        else if (others > 0)
            row[column] *= std::max(0.0, 1 - weight) / others;
    return row;
}

int WeightModel::layerId(const Settings& settings, int shape) const
{
    for (const ModelLayer& layer : shapes[at(shape)].layers)
        if (layer.parent == -1 && layer.name == settings.layer)
            return layer.id;
    return -1;
}

std::string WeightModel::paintTarget(const EditModel& edit, const ModelShape& shape)
{
    if (edit.settings.mode == Mode::kInfluence)
        return std::to_string(shape.influence);
    return edit.settings.mode == Mode::kMask ? "mask" : "dq";
}

bool WeightModel::isEdited(const Settings& settings, int shape) const
{
    const ModelShape& known = shapes[at(shape)];
    if (known.influences == 0)
        return false;
    if (settings.mode == Mode::kSkin)
        return known.influence >= 0;
    if (settings.mode == Mode::kBlend)
        return true;
    const int layer = layerId(settings, shape);
    const auto isChild = [&](const ModelLayer& other) { return other.parent == layer; };
    const bool isGroup = std::any_of(known.layers.begin(), known.layers.end(), isChild);
    if (layer < 0 || (isGroup && settings.mode != Mode::kMask))
        return false;
    return settings.mode != Mode::kInfluence || known.influence >= 0;
}

/// The points that the deformer works on. Lattice points take the falloff that stands in the selection where
/// they stand among the members; beyond its end every falloff is whole. Surfaces have none.
Piece WeightModel::members(const ModelDeformer& deformer, const Piece& piece) const
{
    Piece common{piece.shape, {}, {}};
    const auto found = deformer.members.find(piece.shape);
    const ModelShape::Kind kind = shapes[at(piece.shape)].kind;
    if (found == deformer.members.end() || kind == ModelShape::kSurface)
        return common;
    const std::vector<int>& all = found->second;
    for (std::size_t position = 0; position < piece.points.size(); ++position) {
        const auto member = std::lower_bound(all.begin(), all.end(), piece.points[position]);
        if (member == all.end() || *member != piece.points[position])
            continue;
        const std::size_t from =
            kind == ModelShape::kLattice ? static_cast<std::size_t>(member - all.begin()) : position;
        common.points.push_back(piece.points[position]);
        common.falloff.push_back(from < piece.falloff.size() ? piece.falloff[from] : 1.0F);
    }
    return common;
}

Pieces WeightModel::edited(const Settings& settings, int deformer, const RichPieces& rich) const
{
    Pieces found;
    const bool byMembers = isFloatMode(settings.mode);
    if (byMembers && deformer < 0)
        return found;
    const ModelDeformer::Kind kind = byMembers ? deformers[at(deformer)].kind : ModelDeformer::kSkin;
    if (settings.mode == Mode::kDefault && kind != ModelDeformer::kWeighted && kind != ModelDeformer::kMasked)
        return found;
    if (settings.mode == Mode::kPlug && kind != ModelDeformer::kMasked)
        return found;
    if (settings.mode == Mode::kTarget) {
        const std::vector<std::string>& targets = deformers[at(deformer)].targets;
        if (std::find(targets.begin(), targets.end(), settings.target) == targets.end())
            return found;
    }
    for (const Pieces* side : {&rich.primary, &rich.mirrored})
        for (const Piece& piece : *side) {
            Piece part = byMembers ? members(deformers[at(deformer)], piece) : piece;
            if (!part.points.empty() && (byMembers || isEdited(settings, piece.shape)))
                isLayerMode(settings.mode) ? unite(found, part) : found.push_back(std::move(part));
        }
    return found;
}

MapKey WeightModel::keyOf(const EditModel& edit, int shape) const
{
    const Mode mode = edit.settings.mode;
    if (mode == Mode::kBlend)
        return MapKey(shapes[at(shape)].name, "blend", 0);
    if (edit.deformer < 0)
        return {};
    const ModelDeformer& deformer = deformers[at(edit.deformer)];
    if (mode == Mode::kDefault || mode == Mode::kPlug) {
        const int geometry = deformer.geometryOf(shape);
        return MapKey(geometry < 0 ? "" : deformer.name, mode == Mode::kDefault ? "weights" : "mask",
                      geometry);
    }
    // The blend shape modes know the first geometry alone, whatever shape is edited.
    if (mode == Mode::kBase)
        return MapKey(deformer.name, "base", 0);
    const auto target = std::find(deformer.targets.begin(), deformer.targets.end(), edit.settings.target);
    return MapKey(deformer.name, "target" + std::to_string(target - deformer.targets.begin()), 0);
}

Values* WeightModel::numbers(const EditModel& edit, int shape)
{
    const auto found = weights.numbers.find(keyOf(edit, shape));
    return found == weights.numbers.end() ? nullptr : &found->second;
}

const Values& WeightModel::paintedArray(int shape, int id, const std::string& target) const
{
    return weights.painted[at(shape)].at(key(id, target));
}

Values& WeightModel::paintedArray(int shape, int id, const std::string& target)
{
    return weights.painted[at(shape)].at(key(id, target));
}

bool WeightModel::read(EditModel& edit) const
{
    const Mode mode = edit.settings.mode;
    const bool blendShape = mode == Mode::kTarget || mode == Mode::kBase;
    if (blendShape && deformers[at(edit.deformer)].kind != ModelDeformer::kBlendShape)
        return false;
    for (const Piece& piece : edit.pieces) {
        const ModelShape& shape = shapes[at(piece.shape)];
        OldWeights old;
        if (isLayerMode(mode)) {
            for (const std::string& target : targetsOf(mode, shape))
                old.arrays[target] = paintedArray(piece.shape, layerId(edit.settings, piece.shape), target);
        } else if (mode == Mode::kSkin) {
            for (const int point : piece.points) {
                old.rows.push_back(weights.skin[at(piece.shape)][at(point)]);
                old.numbers.push_back(old.rows.back()[at(shape.influence)]);
            }
        } else {
            for (const int point : piece.points)
                old.numbers.push_back(weights.numbers.at(keyOf(edit, piece.shape))[at(point)]);
        }
        edit.old.push_back(std::move(old));
    }
    return true;
}

bool WeightModel::probe(const EditModel& edit, const Spot& spot)
{
    if (isLayerMode(edit.settings.mode)) {
        const auto isOn = [&](const Piece& piece) { return piece.shape == spot.shape; };
        if (std::any_of(edit.pieces.begin(), edit.pieces.end(), isOn))
            compose(spot.shape);
        return false;
    }
    const bool steps = edit.settings.mode == Mode::kDefault || edit.settings.mode == Mode::kBlend;
    Values* const array = steps ? numbers(edit, spot.shape) : nullptr;
    if (array == nullptr)
        return false;
    // Down, up and down again by steps of its own; every other mode writes back what it read.
    const bool single = edit.settings.mode == Mode::kDefault;
    const auto kept = [single](double weight) { return single ? narrowed(weight) : weight; };
    double& weight = (*array)[at(spot.point)];
    const double before = weight;
    weight = kept(kept(kept(weight - kStep) + 2 * kStep) - kStep);
    return weight != before;
}

void WeightModel::stroke(const EditModel& edit, bool live)
{
    for (std::size_t place = 0; place < edit.pieces.size(); ++place) {
        const Piece& piece = edit.pieces[place];
        if (isLayerMode(edit.settings.mode)) {
            strokeLayer(edit, place);
            continue;
        }
        for (std::size_t k = 0; k < piece.points.size(); ++k) {
            const double old = edit.old[place].numbers[k], change = changeAt(edit, piece, k);
            const double weight =
                live ? liveWeight(edit.settings, old, change) : redoneWeight(edit.settings, old, change);
            if (edit.settings.mode == Mode::kSkin) {
                Values& row = weights.skin[at(piece.shape)][at(piece.points[k])];
                row = withRoom(row, at(shapes[at(piece.shape)].influence), weight);
            } else {
                (*numbers(edit, piece.shape))[at(piece.points[k])] = weight;
            }
        }
    }
}

void WeightModel::strokeLayer(const EditModel& edit, std::size_t place)
{
    const Piece& piece = edit.pieces[place];
    const int layer = layerId(edit.settings, piece.shape);
    const std::string target = paintTarget(edit, shapes[at(piece.shape)]);
    std::map<std::string, Values> arrays = edit.old[place].arrays;
    for (std::size_t k = 0; k < piece.points.size(); ++k) {
        double& weight = arrays.at(target)[at(piece.points[k])];
        const double old = weight;
        weight = within(old + changeAt(edit, piece, k), 0, 1);
        std::vector<double*> others;
        for (auto& array : arrays)
            if (array.first != target)
                others.push_back(&array.second[at(piece.points[k])]);
        shareOut(others, old, weight, edit.settings.distribute);
    }
    for (const auto& array : arrays)
        writeLayer(piece.shape, layer, array.first, array.second);
}

bool WeightModel::redoesAlike(const EditModel& edit) const
{
    for (std::size_t place = 0; place < edit.pieces.size() && !isLayerMode(edit.settings.mode); ++place)
        for (std::size_t k = 0; k < edit.pieces[place].points.size(); ++k) {
            const double old = edit.old[place].numbers[k], change = changeAt(edit, edit.pieces[place], k);
            if (liveWeight(edit.settings, old, change) != redoneWeight(edit.settings, old, change))
                return false;
        }
    return true;
}

void WeightModel::undoStroke(const EditModel& edit)
{
    const Mode mode = edit.settings.mode;
    for (std::size_t place = 0; place < edit.pieces.size(); ++place) {
        const Piece& piece = edit.pieces[place];
        // Masks and dual-quaternion weights of layers stay; of influences only the edited one comes back.
        if (mode == Mode::kInfluence) {
            const std::string target = paintTarget(edit, shapes[at(piece.shape)]);
            writeLayer(piece.shape, layerId(edit.settings, piece.shape), target,
                       edit.old[place].arrays.at(target));
        }
        for (std::size_t k = 0; k < piece.points.size() && !isLayerMode(mode); ++k)
            if (mode == Mode::kSkin)
                weights.skin[at(piece.shape)][at(piece.points[k])] = edit.old[place].rows[k];
            else
                (*numbers(edit, piece.shape))[at(piece.points[k])] = edit.old[place].numbers[k];
    }
}

void WeightModel::restore(const EditModel& edit)
{
    if (!isLayerMode(edit.settings.mode))
        return undoStroke(edit);
    for (std::size_t place = 0; place < edit.pieces.size(); ++place)
        for (const auto& [target, values] : edit.old[place].arrays)
            writeLayer(edit.pieces[place].shape, layerId(edit.settings, edit.pieces[place].shape), target,
                       values);
}

void WeightModel::writeLayer(int shape, int id, const std::string& target, const Values& values)
{
    paintedArray(shape, id, target) = values;
    compose(shape);
}

void WeightModel::compose(int shape)
{
    const ModelShape& known = shapes[at(shape)];
    Rows rows = known.baseRows;
    Values blend = known.baseBlend;
    for (const ModelLayer& layer : known.layers) {
        const auto isChild = [&](const ModelLayer& other) { return other.parent == layer.id; };
        if (std::any_of(known.layers.begin(), known.layers.end(), isChild))
            continue;
        for (std::size_t point = 0; point < at(known.size); ++point) {
            double amount = 1, sum = 0;
            for (int id = layer.id; id != -1;) {
                const auto part = std::find_if(known.layers.begin(), known.layers.end(),
                                               [id](const ModelLayer& other) { return other.id == id; });
                amount *= part->opacity * paintedArray(shape, id, "mask")[point];
                id = part->parent;
            }
            for (const std::string& target : targetsOf(Mode::kInfluence, known))
                sum += paintedArray(shape, layer.id, target)[point];
            for (int column = 0; column < known.influences; ++column) {
                const double share =
                    paintedArray(shape, layer.id, std::to_string(column))[point] / std::max(sum, 1.0);
                double& weight = rows[point][at(column)];
                weight = weight * (1 - amount * std::min(sum, 1.0)) + amount * share;
            }
            blend[point] += amount * (paintedArray(shape, layer.id, "dq")[point] - blend[point]);
        }
    }
    weights.skin[at(shape)] = std::move(rows);
    weights.numbers.at(MapKey(known.name, "blend", 0)) = std::move(blend);
}

} // namespace testing_support
