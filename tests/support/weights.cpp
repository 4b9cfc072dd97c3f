#include "support/weights.h"

#include "graph/graph.h"
#include "mel/interpreter.h"
#include "selection/selectionState.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace testing_support {

std::vector<double> defaultWeights(host::Session& session, const std::string& deformer, int vertexCount,
                                   int geometry)
{
    const host::Plug weights =
        session.graph().plug(deformer + ".weightList[" + std::to_string(geometry) + "].weights");
    std::vector<double> values;
    for (int vertex = 0; vertex < vertexCount; ++vertex)
        values.push_back(weights.element(static_cast<unsigned>(vertex)).number());
    return values;
}

std::vector<std::vector<double>> skinWeights(host::Session& session, const std::string& skin, int vertexCount,
                                             int columns)
{
    const host::Plug list = session.graph().plug(skin + ".weightList");
    std::vector<std::vector<double>> rows;
    for (int vertex = 0; vertex < vertexCount; ++vertex) {
        const host::Plug row = list.element(static_cast<unsigned>(vertex)).child(0);
        std::vector<double> values;
        for (int column = 0; column < columns; ++column)
            values.push_back(row.element(static_cast<unsigned>(column)).number());
        rows.push_back(values);
    }
    return rows;
}

std::map<int, double> selectedFalloff(host::Session& session, const std::string& shape)
{
    std::map<int, double> falloff;
    const host::Node& node = session.graph().get(shape);
    const host::RichSelection rich = session.selection().rich();
    for (const host::SelectionList* part : {&rich.selection, &rich.symmetry})
        for (const host::SelectionItem& item : part->items) {
            if (item.node.get() != &node || !item.component)
                continue;
            const host::Component& component = *item.component;
            for (std::size_t k = 0; k < component.count(); ++k)
                falloff[component.elements[k]] =
                    component.weights.empty() ? 1.0 : static_cast<double>(component.weights[k]);
        }
    return falloff;
}

std::string sceneText(host::Session& session)
{
    const std::string path = ::testing::TempDir() + "sceneText" + std::to_string(getpid()) + ".ma";
    session.mel().execute("file -force -type \"mayaAscii\" -exportAll \"" + path + "\"");
    std::ifstream file(path, std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::remove(path.c_str());
    return text;
}

} // namespace testing_support
