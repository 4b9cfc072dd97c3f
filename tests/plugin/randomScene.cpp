#include "plugin/randomScene.h"

#include "selection/picking.h"

#include <cstdio>
#include <iostream>

using namespace testing_support;

namespace {

constexpr double kStep = 0.005;

} // namespace

std::string RandomScene::exact(double number)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.17g", number);
    return text;
}

const char* RandomScene::nameOf(Kind kind)
{
    switch (kind) {
    case Kind::kMeshes:
        return "Meshes";
    case Kind::kPoints:
        return "Points";
    case Kind::kBlendShapes:
        return "BlendShapes";
    default:
        return "Layers";
    }
}

// Refusals go to the error stream by the thousand; what they say is tested elsewhere.
RandomScene::RandomScene() : errors(std::cerr.rdbuf(&silence)) {}

RandomScene::~RandomScene()
{
    std::cerr.rdbuf(errors);
}

Weights RandomScene::actual()
{
    Weights weights;
    for (const auto& [key, map] : maps) {
        Values& values = weights.numbers[key];
        for (unsigned point = 0; point < static_cast<unsigned>(map.size); ++point)
            values.push_back(map.plug.element(point).number());
    }
    for (std::size_t index = 0; index < shapes.size(); ++index) {
        const ModelShape& known = model.scene.shapes[index];
        Rows skin;
        for (int point = 0; point < known.size && known.influences > 0; ++point) {
            const host::Plug row = rows[index].element(static_cast<unsigned>(point)).child(0);
            skin.emplace_back();
            for (int column = 0; column < known.influences; ++column)
                skin.back().push_back(row.element(static_cast<unsigned>(column)).number());
        }
        weights.skin.push_back(std::move(skin));
        weights.painted.emplace_back();
        for (const auto& array : model.scene.weights.painted[index])
            weights.painted.back()[array.first] = painted(static_cast<int>(index), array.first);
    }
    return weights;
}

void RandomScene::setRow(const Spot& spot, const Values& values)
{
    const host::Plug row = rows[at(spot.shape)].element(static_cast<unsigned>(spot.point)).child(0);
    for (std::size_t column = 0; column < values.size(); ++column)
        row.element(static_cast<unsigned>(column)).setNumber(values[column]);
}

std::string RandomScene::shapePath(int shapeIndex)
{
    const std::string& name = model.scene.shapes[at(shapeIndex)].name;
    return "|" + name + "|" + name + "Shape";
}

void RandomScene::paint(int shapeIndex, const std::string& key, const Values& values)
{
    const std::size_t blank = key.find(' ');
    std::string list;
    for (const double value : values)
        list += (list.empty() ? "" : ",") + exact(value);
    mel("ngst2Layers -e -id " + key.substr(0, blank) + " -paintTarget " + key.substr(blank + 1) +
        " -vertexWeights \"" + list + "\" " + shapePath(shapeIndex));
}

Values RandomScene::painted(int shapeIndex, const std::string& key)
{
    const std::size_t blank = key.find(' ');
    return melFloats("ngst2Layers -q -id " + key.substr(0, blank) + " -paintTarget " + key.substr(blank + 1) +
                     " -vertexWeights " + shapePath(shapeIndex));
}

int RandomScene::indexOf(const host::Node* node) const
{
    for (std::size_t index = 0; index < shapes.size(); ++index)
        if (shapes[index].get() == node)
            return static_cast<int>(index);
    return -1;
}

Selection RandomScene::selectionOf(const host::SelectionList& list)
{
    Selection selection;
    for (const host::SelectionItem& item : list.items) {
        const int index = indexOf(item.node.get());
        EXPECT_TRUE(item.component && index >= 0) << "something else is selected or picked";
        if (item.component && index >= 0)
            selection.push_back(
                {index, host::pointIndices(shape(index), item.component.get()), item.component->weights});
    }
    return selection;
}

Selection RandomScene::actualSelection()
{
    return selectionOf(session.selection().active());
}

RichPieces RandomScene::actualRich()
{
    const host::RichSelection rich = session.selection().rich();
    return {selectionOf(rich.selection), selectionOf(rich.symmetry)};
}

Selection RandomScene::highlight(int x, int y)
{
    mel("viewportEvent -move " + std::to_string(x) + " " + std::to_string(y));
    return selectionOf(session.selection().preselection);
}

Selection RandomScene::pick(int x, int y)
{
    return selectionOf(host::pickPoint(session, x, y, true));
}

Selection RandomScene::pick(const Imath::V2d& from, const Imath::V2d& to)
{
    return selectionOf(host::pickRectangle(session, {from.x, from.y, to.x, to.y}, true));
}

std::string RandomScene::names(const Selection& selection)
{
    std::string text;
    for (const Piece& piece : selection)
        for (const std::string& part : host::componentTexts(
                 shape(piece.shape), *host::pointComponent(shape(piece.shape), piece.points)))
            text += " " + model.scene.shapes[at(piece.shape)].name + "." + part;
    return text;
}

Points RandomScene::pointsOf(int index, bool inWorld)
{
    Points points;
    const Imath::M44d matrix = inWorld ? host::worldMatrix(shape(index)) : Imath::M44d();
    for (const Imath::V3d& point : host::shapeGeometry(shape(index))->points()) {
        const Imath::V3d moved = point * matrix;
        points.push_back({moved.x, moved.y, moved.z});
    }
    return points;
}

std::vector<Points> RandomScene::positions()
{
    std::vector<Points> all;
    for (std::size_t index = 0; index < shapes.size(); ++index)
        all.push_back(pointsOf(static_cast<int>(index), false));
    return all;
}

Imath::V3d RandomScene::objectPoint(const Spot& spot)
{
    return host::shapeGeometry(shape(spot.shape))->points()[at(spot.point)];
}

Imath::V2d RandomScene::pixel(const Imath::V3d& world)
{
    short x = 0, y = 0;
    session.viewport().worldToView(world, x, y);
    return {static_cast<double>(x), static_cast<double>(y)};
}

Imath::V2d RandomScene::pixelOf(const Spot& spot)
{
    return pixel(objectPoint(spot) * host::worldMatrix(shape(spot.shape)));
}

bool RandomScene::nudgeLayer(const EditModel& edit, const Spot& spot, Imath::V3d& low, Imath::V3d& high)
{
    const ModelShape& known = model.scene.shapes[at(spot.shape)];
    const auto isOn = [&](const Piece& piece) { return piece.shape == spot.shape; };
    if (std::none_of(edit.pieces.begin(), edit.pieces.end(), isOn))
        return false;
    const std::string key = std::to_string(model.scene.layerId(edit.settings, spot.shape)) + " " +
                            WeightModel::paintTarget(edit, known);
    const Values before = painted(spot.shape, key);
    const Weights all = actual();
    for (const double step : {-kStep, kStep}) {
        Values nudged = before;
        nudged[at(spot.point)] += step;
        paint(spot.shape, key, nudged);
        (step < 0 ? low : high) = objectPoint(spot);
    }
    paint(spot.shape, key, before);
    // Layers were laid over the skin anew, which the press itself has not done yet.
    const Key blend(known.name, "blend", 0);
    for (int point = 0; point < known.size; ++point) {
        setRow({spot.shape, point}, all.skin[at(spot.shape)][at(point)]);
        maps.at(blend).plug.element(static_cast<unsigned>(point)).setNumber(all.numbers.at(blend)[at(point)]);
    }
    return true;
}

bool RandomScene::nudgeSkin(const Spot& spot, Imath::V3d& low, Imath::V3d& high)
{
    if (model.scene.shapes[at(spot.shape)].influence < 0)
        return false;
    const auto influence = at(model.scene.shapes[at(spot.shape)].influence);
    const Values row = model.scene.weights.skin[at(spot.shape)][at(spot.point)];
    for (const double step : {-kStep, kStep}) {
        setRow(spot, WeightModel::withRoom(row, influence, row[influence] + step));
        (step < 0 ? low : high) = objectPoint(spot);
    }
    setRow(spot, row);
    return true;
}

bool RandomScene::nudge(const EditModel& edit, const Spot& spot, Imath::V3d& low, Imath::V3d& high)
{
    const Mode mode = edit.settings.mode;
    if (isLayerMode(mode))
        return nudgeLayer(edit, spot, low, high);
    if (mode == Mode::kSkin)
        return nudgeSkin(spot, low, high);
    const auto map = maps.find(model.scene.keyOf(edit, spot.shape));
    if (map == maps.end())
        return false;
    const host::Plug weight = map->second.plug.element(static_cast<unsigned>(spot.point));
    const bool steps = mode == Mode::kDefault || mode == Mode::kBlend;
    const auto kept = [&](double number) { return mode == Mode::kBlend ? number : narrowed(number); };
    const double before = weight.number(), less = kept(before - kStep);
    weight.setNumber(less);
    low = objectPoint(spot);
    weight.setNumber(kept(steps ? less + 2 * kStep : before + kStep));
    high = objectPoint(spot);
    weight.setNumber(before);
    return true;
}

Imath::V2d RandomScene::direction(const EditModel& edit, const Spot& spot)
{
    Imath::V3d low, high;
    if (!nudge(edit, spot, low, high))
        return {0, 0};
    const Imath::V2d motion = pixel(high) - pixel(low);
    if (motion.length() >= 1)
        return motion / (2 * kStep);
    return pixel(low + (high - low) / (2 * kStep)) - pixel(low);
}
