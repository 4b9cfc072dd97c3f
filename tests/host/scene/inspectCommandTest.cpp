#include "support/hostFixture.h"

#include <algorithm>

namespace {

using testing_support::HostTest;
using Strings = std::vector<std::string>;

/// A small scene: |top|mid|leaf, a shape under mid fed by a cube through a skin, one set of attributes.
class InspectCommands : public HostTest {
public:
    void SetUp() override
    {
        mel("createNode transform -n root; createNode transform -n mid -p root; createNode joint -n leaf -p "
            "mid;"
            "createNode mesh -n midShape -p mid; createNode mesh -n midShapeOrig -p mid;"
            "setAttr midShapeOrig.intermediateObject 1; createNode polyCube -n cube;"
            "createNode skinCluster -n skin; connectAttr cube.out midShapeOrig.i;"
            "connectAttr midShapeOrig.worldMesh[0] skin.ip[0].ig; connectAttr skin.og[0] midShape.i;"
            "connectAttr leaf.worldMatrix[0] skin.matrix[3]; setAttr skin.wl[0].w[0:2] .5 .25 .25;"
            "addAttr -ln mode -at \"enum\" -en \"off:on=4:auto\" leaf; setAttr leaf.mode 4; select -cl");
    }
};

TEST_F(InspectCommands, GiveTheNamesThatAreAskedFor)
{
    const struct {
        const char* command;
        Strings names;
    } rows[] = {
        {"ls \"mid*\"", {"mid", "midShape", "midShapeOrig"}},
        {"ls -s \"mid*\"", {"midShape", "midShapeOrig"}},
        {"ls -ni -type mesh", {"midShape"}},
        {"ls -l leaf", {"|root|mid|leaf"}},
        {"ls -dag -tr root", {"root", "mid", "leaf"}},
        {"ls -type transform -dag mid", {"mid", "leaf"}},
        {"ls -exactType joint", {"leaf"}},
        {"ls -st skin", {"skin", "skinCluster"}},
        {"ls nobody", {}},
        {"ls \"|root|*\"", {"mid"}},
        {"ls -fl \"mid.vtx[1:2]\"", {"mid.vtx[1]", "mid.vtx[2]"}},
        {"ls \"mid.vtx[*]\"", {"mid.vtx[0:7]"}},
        {"select leaf skin; ls -sl -type joint", {"leaf"}},
        {"listRelatives mid", {"leaf", "midShape", "midShapeOrig"}},
        {"listRelatives -s -ni mid", {"midShape"}},
        {"listRelatives -p -f leaf", {"|root|mid"}},
        {"listRelatives -ad root", {"leaf", "midShape", "midShapeOrig", "mid"}},
        {"listRelatives -type joint -c mid", {"leaf"}},
        {"listConnections -s 1 -d 0 skin", {"mid", "leaf"}},
        {"listConnections -s 1 -d 0 -sh 1 skin", {"midShapeOrig", "leaf"}},
        {"listConnections -p 1 -c 1 skin.matrix", {"skin.matrix[3]", "leaf.worldMatrix[0]"}},
        {"listConnections -type joint skin", {"leaf"}},
        {"listConnections -s 0 -p 1 skin.og[0]", {"midShape.inMesh"}},
        {"listHistory mid", {"midShape", "skin", "midShapeOrig", "cube", "leaf"}},
        {"listHistory -pdo midShape", {"skin", "cube"}},
        {"listHistory -f -lv 1 cube", {"cube", "midShapeOrig"}},
        {"aliasAttr -q skin", {}},
        {"listAttr -ud leaf", {"mode"}},
        {"listAttr -st \"translate*\" leaf", {"translate", "translateX", "translateY", "translateZ"}},
        {"attributeQuery -lc -n leaf t", {"translateX", "translateY", "translateZ"}},
        {"attributeQuery -le -n leaf mode", {"off:on=4:auto"}},
        {"attributeQuery -lp -type transform tx", {"translate"}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(melStrings(row.command), row.names) << row.command;
    }
}

TEST_F(InspectCommands, TellValuesWithTheirType)
{
    using mel_t = host::mel::Type;
    const struct {
        const char* command;
        mel_t type;
        const char* text;
    } rows[] = {
        {"getAttr leaf.tx", mel_t::kFloat, "0"},
        {"getAttr leaf.v", mel_t::kInt, "1"},
        {"getAttr leaf.mode", mel_t::kInt, "4"},
        {"getAttr -asString leaf.mode", mel_t::kString, "on"},
        {"getAttr -type leaf.t", mel_t::kString, "double3"},
        {"getAttr -type leaf.rx", mel_t::kString, "doubleAngle"},
        {"getAttr -size skin.wl", mel_t::kInt, "1"},
        {"nodeType leaf", mel_t::kString, "joint"},
        {"objExists leaf", mel_t::kInt, "1"},
        {"objExists \"le*\"", mel_t::kInt, "1"},
        {"objExists leaf.tx", mel_t::kInt, "1"},
        {"objExists leaf.nothing", mel_t::kInt, "0"},
        {"objExists nobody", mel_t::kInt, "0"},
        {"objExists \"mid.vtx[7]\"", mel_t::kInt, "1"},
        {"objExists \"mid.vtx[8]\"", mel_t::kInt, "0"},
        {"attributeQuery -ex -n leaf mode", mel_t::kInt, "1"},
        {"attributeQuery -ex -type skinCluster nothing", mel_t::kInt, "0"},
        {"attributeQuery -ln -n leaf tx", mel_t::kString, "translateX"},
        {"attributeQuery -m -type skinCluster weightList", mel_t::kInt, "1"},
        {"isConnected cube.out midShapeOrig.i", mel_t::kInt, "1"},
    };
    for (const auto& row : rows) {
        const host::mel::Value value = mel(row.command);
        EXPECT_EQ(value.type(), row.type) << row.command;
        EXPECT_EQ(value.toString(), row.text) << row.command;
    }
    EXPECT_EQ(melFloats("getAttr skin.weightList[0].weights[0:2]"), (std::vector<double>{0.5, 0.25, 0.25}));
    EXPECT_EQ(melFloats("getAttr skin.wl[0].w"), (std::vector<double>{0.5, 0.25, 0.25}));
    EXPECT_EQ(melFloats("getAttr leaf.worldMatrix").size(), 16u);
    EXPECT_EQ(melStrings("nodeType -inherited leaf").back(), "joint");
    EXPECT_EQ(mel("getAttr -mi skin.matrix").toIntArray(), (std::vector<int>{3}));
    EXPECT_NE(melError("getAttr midShape.outMesh").find("mesh"), std::string::npos);
    EXPECT_NE(melError("ls -nonsense").find("nonsense"), std::string::npos);
}

} // namespace
