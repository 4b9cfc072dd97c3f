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
        DagNode& top = place("top");
        place("arm", &top);
        place("hand", &top);
        connect("x.sum", "h.plain");
        set("h.weightList[1].weights[4]", 0.5);
        set("h.skin[1].skinWeights[4]", 0.5);
        graph.addAttribute(graph.get("h"), AttributeSpec("extra", "ex").take());
        connect("h.extra", "y.a");
        connect("x.sum", "h.extra");
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

TEST_F(EditsTest, UndoOfAnEditOfADeletedNodeIsAnErrorAndTheQueueGoesOn)
{
    edits.setNumber(plug("x.b"), 1);
    edits.setNumber(plug("y.b"), 2);
    graph.remove(graph.get("y"));
    expectError("The node 'y' has been deleted.");
    undo.undo();
    undo.undo();
    EXPECT_EQ(number("x.b"), 10);
}
