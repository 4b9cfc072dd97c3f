#include "support/hostFixture.h"

namespace {

using HeadsUpTest = testing_support::HostTest;

TEST_F(HeadsUpTest, BlocksAreCountedPerSection)
{
    // An empty section has no last block, so "last plus one" is its first.
    EXPECT_EQ(melInt("headsUpDisplay -lastOccupiedBlock 7"), -1);
    mel("headsUpDisplay -s 7 -b 0 first; headsUpDisplay -s 7 -b 2 third; headsUpDisplay -s 2 -b 5 other");
    EXPECT_EQ(melInt("headsUpDisplay -lastOccupiedBlock 7"), 2);
    EXPECT_EQ(melInt("headsUpDisplay -nextFreeBlock 7"), 1);
    EXPECT_EQ(melInt("headsUpDisplay -nextFreeBlock 2"), 0);
    mel("headsUpDisplay -removePosition 7 0");
    EXPECT_EQ(melInt("headsUpDisplay -nextFreeBlock 7"), 0);
    EXPECT_EQ(melStrings("headsUpDisplay -lh"), std::vector<std::string>({"other", "third"}));
}

TEST_F(HeadsUpTest, LooksAreEditedAndQueried)
{
    mel("headsUpDisplay -vis 0 -s 7 -b 1 notes");
    EXPECT_EQ(melInt("headsUpDisplay -ex \"notes\""), 1);
    EXPECT_EQ(melInt("headsUpDisplay -q -vis \"notes\""), 0);
    mel("headsUpDisplay -e -vis 1 -label \"Weights:\" -labelFontSize \"large\" notes");
    EXPECT_EQ(melInt("headsUpDisplay -q -vis notes"), 1);
    EXPECT_EQ(melString("headsUpDisplay -q -label notes"), "Weights:");
    EXPECT_EQ(melString("headsUpDisplay -q -labelFontSize notes"), "large");
    mel("headsUpDisplay -remove notes");
    EXPECT_EQ(melInt("headsUpDisplay -ex notes"), 0);
}

TEST_F(HeadsUpTest, WhatDoesNotFitIsRefusedAndChangesNothing)
{
    mel("headsUpDisplay -s 3 -b 0 -label \"kept\" taken");
    const struct {
        const char* command;
        const char* names;
    } cases[] = {
        {"headsUpDisplay -s 3 -b 0 second", "taken"},
        {"headsUpDisplay -s 3 -b 1 taken", "taken"},
        {"headsUpDisplay -s 10 -b 0 second", "10"},
        {"headsUpDisplay -s 3 second", "-block"},
        {"headsUpDisplay -e -vis 1 missing", "missing"},
        {"headsUpDisplay -q -label missing", "missing"},
        {"headsUpDisplay -e -label \"new\" -labelFontSize \"huge\" taken", "huge"},
        {"headsUpDisplay -e -label \"new\" -s 12 taken", "12"},
    };
    for (const auto& refused : cases)
        EXPECT_NE(melError(refused.command).find(refused.names), std::string::npos) << refused.command;
    EXPECT_EQ(melString("headsUpDisplay -q -label taken"), "kept");
    EXPECT_EQ(melStrings("headsUpDisplay -lh").size(), 1U);
}

TEST_F(HeadsUpTest, PanelsAreNamedAndTyped)
{
    EXPECT_EQ(melString("getPanel -withFocus"), "modelPanel4");
    EXPECT_EQ(melString("getPanel -typeOf \"modelPanel4\""), "modelPanel");
    mel("setFocus scriptEditorPanel1");
    EXPECT_EQ(melString("getPanel -withFocus"), "scriptEditorPanel1");
    EXPECT_NE(melError("setFocus nowhere").find("nowhere"), std::string::npos);
}

} // namespace
