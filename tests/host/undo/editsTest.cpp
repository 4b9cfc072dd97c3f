#include "host/graph/graphFixture.h"

#include "graph/data.h"
#include "undo/edits.h"
#include "undo/undoQueue.h"

#include <functional>
#include <memory>

using namespace host;

namespace {

class EditsTest : public GraphTest {
public:
    EditsTest() : edits(session.edits()), undo(session.undo())
    {
        make("adder", "x");
        make("adder", "y");
        make("holder", "h");
        make("holder", "h2");
        plug("h.label").setText("said");
        DagNode& top = place("top");
        place("arm", &top);
        place("hand", &top);
        connect("x.sum", "h.plain");
        set("h.weightList[1].weights[4]", 0.5);
        set("h.skin[1].skinWeights[4]", 0.5);
        graph.addAttribute(graph.get("h"), AttributeSpec("extra", "ex").take());
        connect("h.extra", "y.a");
        connect("x.sum", "h.extra");
        connect("x.sum", "h.deep[5].group[2].id");
        connect("x.sum", "h.weightList[9].weights[0]");
        connect("h.label", "h2.label");
        // What is written into an element that only a connection has made.
        set("h.deep[5].group[3].id", 7);
        set("h.weightList[9].weights[1]", 0.75);
    }

    /// Makes an edit, undoes and redoes it twice, and leaves it undone.
    void takeBackAndAgain(const std::string& what, const std::function<void()>& edit)
    {
        const std::string before = describe();
        {
            const UndoQueue::CommandScope scope(undo, what);
            edit();
        }
        const std::string after = describe();
        ASSERT_NE(after, before);
        ASSERT_EQ(undo.undoName(), what);
        for (int round = 0; round < 2; ++round) {
            undo.undo();
            ASSERT_EQ(describe(), before);
            undo.redo();
            ASSERT_EQ(describe(), after);
        }
        undo.undo();
    }

    Edits& edits;
    UndoQueue& undo;
};

} // namespace

TEST_F(EditsTest, EveryEditIsTakenBackAndTakenAgainExactly)
{
    const auto dag = [this](const char* name) -> DagNode& { return *graph.get(name).asDag(); };
    const struct {
        const char* what;
        std::function<void()> edit;
    } kRows[] = {
        {"create", [&] { edits.create(*graph.types().find("adder"), "fresh"); }},
        {"create below", [&] { edits.create(*graph.types().find("place"), "leaf", &dag("arm")); }},
        {"create a shape with its transform", [&] { edits.create(*graph.types().find("mesh")); }},
        {"remove", [&] { edits.remove(graph.get("h")); }},
        {"remove what feeds elements", [&] { edits.remove(graph.get("x")); }},
        {"remove a subtree", [&] { edits.remove(graph.get("top")); }},
        {"rename", [&] { edits.rename(graph.get("x"), "y"); }},
        {"reparent", [&] { edits.reparent(dag("arm"), nullptr); }},
        {"reparent below", [&] { edits.reparent(dag("arm"), &dag("hand")); }},
        {"number", [&] { edits.setNumber(plug("y.b"), 3.5); }},
        {"first weight", [&] { edits.setNumber(plug("h.weightList[7].weights[2]"), 0.25); }},
        {"weight", [&] { edits.setNumber(plug("h.weightList[1].weights[4]"), 0.25); }},
        {"skin weight", [&] { edits.setNumber(plug("h.skin[1].skinWeights[4]"), 0.25); }},
        {"new skin row", [&] { edits.setNumber(plug("h.skin[9].skinWeights[1]"), 0.25); }},
        {"deep element", [&] { edits.setNumber(plug("h.deep[2].group[1].id"), 4); }},
        {"text", [&] { edits.setText(plug("h.label"), "word"); }},
        {"matrix", [&] { edits.setMatrix(plug("h.frame[3]"), Imath::M44d(2.0)); }},
        {"data", [&] { edits.setData(plug("h.shape"), std::make_shared<IntArrayData>()); }},
        {"lock", [&] { edits.setLocked(plug("h.moveX"), true); }},
        {"unset element", [&] { edits.unset(plug("h.weightList[1].weights[4]")); }},
        {"unset row", [&] { edits.unset(plug("h.skin[1]")); }},
        {"unset array element", [&] { edits.unset(plug("h.weightList[1]")); }},
        {"connect", [&] { edits.connect(plug("y.sum"), plug("h.moveX")); }},
        {"connect over another", [&] { edits.connect(plug("y.sum"), plug("h.plain"), true); }},
        {"disconnect", [&] { edits.disconnect(plug("x.sum"), plug("h.plain")); }},
        {"disconnect an element", [&] { edits.disconnect(plug("x.sum"), plug("h.deep[5].group[2].id")); }},
        {"disconnect a text", [&] { edits.disconnect(plug("h.label"), plug("h2.label")); }},
        {"add attribute", [&] { edits.addAttribute(graph.get("x"), AttributeSpec("more", "mo").take()); }},
        {"remove attribute",
         [&] { edits.removeAttribute(graph.get("h"), *graph.get("h").findAttribute("extra")); }},
        {"aliases",
         [&] {
             edits.setAliases(graph.get("h"), {{"smile", "weight[1]"}});
         }},
        {"lock node", [&] { edits.setNodeLocked(graph.get("h"), true); }},
        {"replace below",
         [&] {
             const Plug weights = plug("h.weightList[1].weights");
             edits.replaceBelow(weights, [&] {
                 for (std::uint32_t vertex = 0; vertex < 20; ++vertex)
                     weights.element(vertex).setNumber(vertex / 20.0);
             });
         }},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.what);
        ASSERT_NO_FATAL_FAILURE(takeBackAndAgain(row.what, row.edit));
    }
}

TEST_F(EditsTest, UndoPassesTheChangeOnToWhatDependsOnIt)
{
    EXPECT_EQ(number("y.sum"), 20);
    edits.setNumber(plug("x.a"), 5);
    EXPECT_EQ(number("y.sum"), 25);
    undo.undo();
    EXPECT_EQ(number("y.sum"), 20);
    edits.disconnect(plug("h.extra"), plug("y.a"));
    set("x.a", 7);
    EXPECT_EQ(number("y.sum"), 20);
    undo.undo();
    EXPECT_EQ(number("y.sum"), 27);
}

TEST_F(EditsTest, AReplacementThatFailsLeavesTheOldValues)
{
    const std::string before = describe();
    EXPECT_THROW(edits.replaceBelow(plug("h.weightList[1].weights"),
                                    [&] {
                                        set("h.weightList[1].weights[4]", 0.9);
                                        throw Error("enough");
                                    }),
                 Error);
    EXPECT_EQ(describe(), before);
    EXPECT_EQ(undo.undoCount(), 0u);
}

TEST_F(EditsTest, ARefusedEditLeavesNothingToUndo)
{
    const std::string before = describe();
    EXPECT_THROW(edits.setNumber(plug("h.plain"), 1), Error);
    EXPECT_THROW(edits.connect(plug("y.sum"), plug("h.plain")), Error);
    EXPECT_THROW(edits.connect(plug("y.sum"), plug("h.label"), true), Error);
    EXPECT_THROW(edits.disconnect(plug("y.sum"), plug("h.plain")), Error);
    EXPECT_EQ(undo.undoCount(), 0u);
    EXPECT_EQ(describe(), before);
}

TEST_F(EditsTest, WhatACutLeavesBehindDoesNotDependOnWhoHasLooked)
{
    make("holder", "end");
    make("adder", "middle");
    for (const bool looked : {false, true}) {
        connect("h.plain", "middle.a", true);
        connect("middle.sum", "end.plain", true);
        set("x.a", looked ? 3 : 4);
        if (looked)
            number("end.plain");
        edits.remove(graph.get("middle")); // its own input is cut first
        EXPECT_EQ(number("end.plain"), looked ? 23 : 24);
        undo.undo();
        set("x.a", 5);
        EXPECT_EQ(number("end.plain"), 25);
        disconnect("middle.sum", "end.plain");
        disconnect("h.plain", "middle.a");
    }
}

TEST_F(EditsTest, ValuesWrittenInBetweenSurviveAnUndo)
{
    edits.disconnect(plug("x.sum"), plug("h.deep[5].group[2].id"));
    set("h.deep[5].group[4].id", 8); // by a plug-in, which records nothing
    edits.setNumber(plug("h.deep[6].group[0].id"), 9);
    set("h.deep[6].group[1].id", 10);
    undo.undo();
    undo.undo();
    EXPECT_EQ(number("h.deep[5].group[4].id"), 8);
    EXPECT_EQ(number("h.deep[6].group[1].id"), 10);
    EXPECT_FALSE(plug("h.deep[6].group[0]").exists());
}

TEST_F(EditsTest, UndoOfAnEditOfADeletedNodeIsAnErrorAndKeepsItsPlace)
{
    edits.setNumber(plug("x.b"), 1);
    edits.setNumber(plug("y.b"), 2);
    graph.remove(graph.get("y"));
    for (int attempt = 0; attempt < 2; ++attempt)
        EXPECT_EQ(errorOf([&] { undo.undo(); }), "The node 'y' has been deleted.");
    EXPECT_EQ(number("x.b"), 1);
    EXPECT_EQ(undo.undoCount(), 2u);
}
