#pragma once

#include "graph/graph.h"
#include "graph/numericArray.h"
#include "support/hostFixture.h"
#include "types/error.h"

#include <string>

/// A host with an empty scene and three small node types:
///   adder:   sum = a + b (doubles); sum throws while a is negative; `tie` is no input of anything
///   holder:  one attribute of each kind, nothing is computed
///   place:   a DAG type; depth = own `step` + the parent's depth, so it depends on the hierarchy
class GraphTest : public testing_support::HostTest {
public:
    GraphTest();

    host::Node& make(const std::string& type, const std::string& name = {}, host::DagNode* parent = nullptr);
    host::DagNode& place(const std::string& name, host::DagNode* parent = nullptr);
    host::Plug plug(const std::string& text) { return graph.plug(text); }
    double number(const std::string& text) { return plug(text).number(); }
    void set(const std::string& text, double value) { plug(text).setNumber(value); }
    void connect(const std::string& source, const std::string& destination, bool force = false)
    {
        graph.connect(plug(source), plug(destination), force);
    }
    void disconnect(const std::string& source, const std::string& destination)
    {
        graph.disconnect(plug(source), plug(destination));
    }
    /// The text of the host::Error that the function throws; a test failure when it does not.
    template <class Function>
    std::string errorOf(const Function& function)
    {
        try {
            function();
        } catch (const host::Error& error) {
            return error.what();
        }
        ADD_FAILURE() << "nothing was thrown";
        return {};
    }
    /// Everything that must survive deleting and bringing back: names, identifiers, order, hierarchy, stored
    /// values, flags, connections in their order.
    std::string describe();

    host::Graph& graph;
    /// How often a compute function has run since the test began.
    static int computed;
};
