#pragma once

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "selection/selectionState.h"
#include "support/toolFixture.h"
#include "support/toolModel.h"
#include "view/viewport.h"

#include <array>
#include <map>
#include <random>

constexpr int kVertices = 6 * 4;
constexpr double kStep = 0.005;
using Vertices = std::vector<int>;

inline double narrowed(double number)
{
    return static_cast<double>(static_cast<float>(number));
}

/// Two meshes under one deformer with two weight maps, each with a skin that blends linear and dual
/// quaternion skinning; and what the platform decides about them, asked directly. The model starts with the
/// same weights.
class RandomScene : public testing_support::ToolTest {
public:
    void SetUp() override
    {
        testing_support::ToolTest::SetUp();
        allowMessages(); // refused pastes say so; what they say is tested elsewhere
        mel("polyPlane -n sheet -w 8 -h 6 -sx 5 -sy 3 -ch 0; polyPlane -n other -w 7 -h 5 -sx 5 -sy 3 -ch 0;"
            "setAttr persp.rotate -type double3 -60 10 0; xform -r -os -t 0 0 7 other.vtx[*]");
        for (const char* mesh : {"sheet", "other"})
            model.restPoints.push_back(restPoints(mesh));
        mel("select sheet other; maskedOffset -n lift -o 0 2.5 0.5; select -cl;"
            "joint -n hip -p -4 0 0; joint -n knee -p 0 0 0; joint -n toe -p 3 0 0");
        for (const std::string mesh : {"sheet", "other"})
            mel("skinCluster -tsb -mi 3 -dr 2 -n " + mesh + "Skin hip knee toe " + mesh + "; setAttr " +
                mesh + "Skin.skinningMethod 2");
        mel("setAttr knee.rotateZ 50; setAttr knee.rotateX 20; viewFit sheet other; select -cl;"
            "softSelect -sse 1 -ssd 2.2 -ssf 0; selectPref -preSelectHilite false");
        edit("-deformer lift -plug mask -influence knee");
        model.influence = 1;
        randomWeights();
        toolOn();
    }

    testing_support::ToolModel::Rows restPoints(const std::string& mesh)
    {
        testing_support::ToolModel::Rows points;
        for (int vertex = 0; vertex < kVertices; ++vertex)
            points.push_back(melFloats("pointPosition -l " + mesh + ".vtx[" + std::to_string(vertex) + "]"));
        return points;
    }
    std::string arrayOf(const std::string& mode, int mesh)
    {
        const std::string geometry = "[" + std::to_string(mesh) + "]";
        if (mode == "default")
            return "lift.weightList" + geometry + ".weights";
        if (mode == "plug")
            return "lift.maskList" + geometry + ".mask";
        return meshes[static_cast<std::size_t>(mesh)] + "Skin.blendWeights";
    }
    void randomWeights()
    {
        for (const int mesh : {0, 1}) {
            for (const char* mode : {"default", "plug", "dualQuaternion"}) {
                plugs[{mode, mesh}] = session.graph().plug(arrayOf(mode, mesh));
                for (int vertex = 0; vertex < kVertices; ++vertex)
                    element(mode, mesh, vertex).setNumber(narrowed(fraction()));
            }
            rows[static_cast<std::size_t>(mesh)] =
                session.graph().plug(meshes[static_cast<std::size_t>(mesh)] + "Skin.weightList");
        }
        model.weights = actual();
    }

    host::Plug element(const std::string& mode, int mesh, int vertex)
    {
        return plugs.at({mode, mesh}).element(static_cast<unsigned>(vertex));
    }
    void setRow(int mesh, int vertex, const std::vector<double>& values)
    {
        const host::Plug row =
            rows[static_cast<std::size_t>(mesh)].element(static_cast<unsigned>(vertex)).child(0);
        for (std::size_t column = 0; column < values.size(); ++column)
            row.element(static_cast<unsigned>(column)).setNumber(values[column]);
    }
    testing_support::ToolModel::Weights actual()
    {
        testing_support::ToolModel::Weights weights;
        for (const auto& [key, array] : plugs)
            for (unsigned vertex = 0; vertex < kVertices; ++vertex)
                weights.plain[key].push_back(array.element(vertex).number());
        for (const host::Plug& list : rows) {
            testing_support::ToolModel::Rows values;
            for (unsigned vertex = 0; vertex < kVertices; ++vertex) {
                const host::Plug row = list.element(vertex).child(0);
                values.push_back({row.element(0).number(), row.element(1).number(), row.element(2).number()});
            }
            weights.skin.push_back(values);
        }
        return weights;
    }
    host::Node& shape(int mesh)
    {
        return session.graph().get(meshes[static_cast<std::size_t>(mesh)] + "Shape");
    }
    int meshOf(const host::Node* node) { return node == &shape(0) ? 0 : node == &shape(1) ? 1 : -1; }
    testing_support::ToolModel::Selection selectionOf(const host::SelectionList& list)
    {
        testing_support::ToolModel::Selection selection;
        for (const host::SelectionItem& item : list.items)
            if (item.component && meshOf(item.node.get()) >= 0)
                selection[meshOf(item.node.get())] = item.component->elements;
        return selection;
    }
    /// What the platform says is selected, spread by the soft selection.
    testing_support::ToolModel::Pieces pieces()
    {
        testing_support::ToolModel::Pieces found;
        for (const host::SelectionItem& item : session.selection().rich().selection.items)
            if (item.component)
                found.push_back({meshOf(item.node.get()), item.component->elements, item.component->weights});
        return found;
    }
    /// The same for a selection that is not made yet.
    testing_support::ToolModel::Pieces piecesOf(const testing_support::ToolModel::Selection& selection)
    {
        const host::SelectionState::Snapshot now = session.selection().snapshot();
        host::SelectionList list;
        for (const auto& [mesh, vertices] : selection)
            for (const int vertex : vertices)
                list.addPattern(session.graph(), names(mesh, {vertex}));
        session.selection().setActive(list);
        testing_support::ToolModel::Pieces found = pieces();
        session.selection().restore(now);
        return found;
    }
    std::string names(int mesh, const Vertices& vertices)
    {
        std::string text;
        for (const int vertex : vertices)
            text += " " + meshes[static_cast<std::size_t>(mesh)] + ".vtx[" + std::to_string(vertex) + "]";
        return text.substr(1);
    }

    Imath::V3d objectPoint(int mesh, int vertex)
    {
        return host::shapeGeometry(shape(mesh))->points()[static_cast<std::size_t>(vertex)];
    }
    Imath::V2d pixel(const Imath::V3d& world)
    {
        short x = 0, y = 0;
        session.viewport().worldToView(world, x, y);
        return {static_cast<double>(x), static_cast<double>(y)};
    }
    /// Writes the clicked vertex's weight a little lower and higher, as the mode stores it, and puts it back.
    Imath::V2d direction(int mesh, int vertex)
    {
        const std::string& mode = model.settings.mode;
        Imath::V3d low, high;
        if (mode == "skinCluster") {
            const std::vector<double> row =
                model.weights.skin[static_cast<std::size_t>(mesh)][static_cast<std::size_t>(vertex)];
            setRow(mesh, vertex,
                   testing_support::ToolModel::withRoom(row, model.influence, row[model.influence] - kStep));
            low = objectPoint(mesh, vertex);
            setRow(mesh, vertex,
                   testing_support::ToolModel::withRoom(row, model.influence, row[model.influence] + kStep));
            high = objectPoint(mesh, vertex);
            setRow(mesh, vertex, row);
        } else {
            const host::Plug weight = element(mode, mesh, vertex);
            const bool single = mode != "dualQuaternion";
            const double before = weight.number();
            const double less = single ? narrowed(before - kStep) : before - kStep;
            weight.setNumber(less);
            low = objectPoint(mesh, vertex);
            weight.setNumber(single ? narrowed(less + 2 * kStep) : less + 2 * kStep);
            high = objectPoint(mesh, vertex);
            weight.setNumber(before);
        }
        const Imath::V2d motion = pixel(high) - pixel(low);
        if (motion.length() >= 1)
            return motion / (2 * kStep);
        return pixel(low + (high - low) / (2 * kStep)) - pixel(low);
    }
    int below(int count) { return static_cast<int>(engine() % static_cast<unsigned>(count)); }
    double fraction() { return below(10001) / 10000.0; }

    std::mt19937 engine;
    testing_support::ToolModel model;
    const std::vector<std::string> meshes = {"sheet", "other"};

private:
    std::map<std::pair<std::string, int>, host::Plug> plugs; ///< weights by mode and mesh
    std::array<host::Plug, 2> rows;
};
