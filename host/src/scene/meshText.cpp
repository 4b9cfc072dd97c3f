#include "scene/meshText.h"

#include "scene/dataText.h"
#include "scene/maStatement.h"
#include "scene/maText.h"
#include "types/error.h"

#include <algorithm>
#include <charconv>

namespace host {

namespace {

constexpr std::size_t kElementsPerStatement = 500;

struct Part {
    std::string_view name;
    bool indexed = false;
    std::size_t first = 0, last = 0;
};

bool readIndex(std::string_view& text, std::size_t& value)
{
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return result.ec == std::errc();
}

/// "vt[0:7]"; no name when the path has another form.
Part partOf(std::string_view path)
{
    static constexpr std::string_view kNames[][2] = {{"vt", "vrts"}, {"ed", "edge"}, {"fc", "face"}};
    const std::size_t bracket = std::min(path.find('['), path.size());
    const std::string_view name = path.substr(0, bracket);
    Part part;
    for (const auto& names : kNames) {
        if (name == names[0] || name == names[1])
            part.name = names[0];
    }
    std::string_view rest = path.substr(bracket);
    if (rest.empty())
        return part;
    rest.remove_prefix(1);
    part.indexed = true;
    bool good = readIndex(rest, part.first);
    part.last = part.first;
    if (good && !rest.empty() && rest.front() == ':') {
        rest.remove_prefix(1);
        good = readIndex(rest, part.last);
    }
    return good && rest == "]" && part.last >= part.first ? part : Part();
}

std::string countFlag(std::size_t whole, std::size_t first)
{
    return first == 0 && whole > 1 ? " -s " + std::to_string(whole) : std::string();
}

std::string range(const char* name, std::size_t first, std::size_t count)
{
    std::string text = std::string(" \".") + name + "[" + std::to_string(first);
    if (count > 1)
        text += ":" + std::to_string(first + count - 1);
    return text + "]\"";
}

/// Calls write(first, count) for one statement after the other.
template <class Write>
void inPieces(std::size_t whole, Write write)
{
    for (std::size_t first = 0; first < whole; first += kElementsPerStatement)
        write(first, std::min(kElementsPerStatement, whole - first));
}

void appendFaces(std::string& out, const MeshTopology& topology)
{
    std::size_t corner = 0;
    inPieces(topology.faceCounts.size(), [&](std::size_t first, std::size_t count) {
        std::size_t corners = 0;
        for (std::size_t face = first; face < first + count; ++face)
            corners += static_cast<std::size_t>(topology.faceCounts[face]);
        out += "\tsetAttr" + countFlag(topology.faceCounts.size(), first) + " -ch " +
               std::to_string(corners) + range("fc", first, count) + " -type \"polyFaces\"";
        for (std::size_t face = first; face < first + count; ++face) {
            out += "\n\t\tf " + std::to_string(topology.faceCounts[face]);
            for (int side = 0; side < topology.faceCounts[face]; ++side)
                out += " " + std::to_string(topology.faceEdges[corner++]);
            if (!topology.faceTexts.empty() && !topology.faceTexts[face].empty())
                out += "\n\t\t" + topology.faceTexts[face];
        }
        out += ";\n";
    });
}

} // namespace

bool MeshText::isPart(std::string_view path)
{
    return !partOf(path).name.empty();
}

void MeshText::read(std::string_view path, MaCursor& words)
{
    lastLine = words.statement().line;
    if (words.atEnd())
        return;
    const Part part = partOf(path);
    if (!part.indexed)
        words.fail("the elements of ." + std::string(part.name) + " are not named");
    if (part.last - part.first >= words.left())
        words.fail("there are fewer values than elements");
    // Files hold them one after the other; what a gap would cost has nothing to do with what the file holds.
    const bool vertices = part.name == "vt", edges = part.name == "ed";
    const std::size_t held = vertices ? points.size()
                             : edges  ? topology.edges.size()
                                      : topology.faceCounts.size();
    if (part.first > held || (!vertices && !edges && part.first < held))
        words.fail(std::string("the ") +
                   (vertices ? "vertices"
                    : edges  ? "edges"
                             : "faces") +
                   " do not come in order");
    const std::size_t count = part.last - part.first + 1;
    if (vertices)
        readVertices(part.first, count, words);
    else if (edges)
        readEdges(part.first, count, words);
    else
        readFaces(count, words);
    words.expectEnd();
}

void MeshText::readVertices(std::size_t first, std::size_t count, MaCursor& words)
{
    if (points.size() < first + count)
        points.resize(first + count, Imath::V3d(0.0));
    for (std::size_t vertex = first; vertex < first + count; ++vertex) {
        for (int axis = 0; axis < 3; ++axis)
            points[vertex][axis] = words.number();
    }
}

void MeshText::readEdges(std::size_t first, std::size_t count, MaCursor& words)
{
    if (topology.edges.size() < first + count)
        topology.edges.resize(first + count, {0, 0, 0});
    for (std::size_t edge = first; edge < first + count; ++edge) {
        for (int& value : topology.edges[edge])
            value = static_cast<int>(words.integer());
    }
}

void MeshText::readFaces(std::size_t count, MaCursor& words)
{
    for (std::size_t face = 0; face < count; ++face) {
        if (words.text() != "f")
            words.fail("a face (f) is expected");
        const std::size_t corners = words.count();
        topology.faceCounts.push_back(static_cast<int>(corners));
        for (std::size_t corner = 0; corner < corners; ++corner)
            topology.faceEdges.push_back(static_cast<int>(words.integer()));
        std::string kept;
        while (!words.atEnd() && words.peek().text != "f") {
            // A line of its own for each kind, as files have it.
            const bool kind = !words.nextIsNumber();
            if (!kept.empty())
                kept += kind ? "\n\t\t" : " ";
            kept += words.text();
        }
        if (!kept.empty())
            topology.faceTexts.resize(topology.faceCounts.size());
        if (!topology.faceTexts.empty() || !kept.empty()) {
            topology.faceTexts.resize(topology.faceCounts.size());
            topology.faceTexts.back() = std::move(kept);
        }
    }
}

std::shared_ptr<const MeshData> MeshText::build() const
{
    auto mesh = std::make_shared<MeshData>();
    auto whole = std::make_shared<MeshTopology>(topology);
    for (const std::array<int, 3>& edge : whole->edges) {
        for (int end = 0; end < 2; ++end) {
            if (edge[static_cast<std::size_t>(end)] < 0 ||
                static_cast<std::size_t>(edge[static_cast<std::size_t>(end)]) >= points.size())
                throw Error("an edge names the vertex " +
                            std::to_string(edge[static_cast<std::size_t>(end)]) + ", which does not exist");
        }
    }
    whole->faceVertices.reserve(whole->faceEdges.size());
    for (const int side : whole->faceEdges) {
        const std::size_t edge = static_cast<std::size_t>(side < 0 ? ~side : side);
        if (edge >= whole->edges.size())
            throw Error("a face names the edge " + std::to_string(edge) + ", which does not exist");
        whole->faceVertices.push_back(whole->edges[edge][side < 0 ? 1 : 0]);
    }
    mesh->pointsRef = std::make_shared<Points>(points);
    mesh->topology = std::move(whole);
    return mesh;
}

void appendMesh(std::string& out, const MeshData& mesh)
{
    const Points& points = mesh.points();
    inPieces(points.size(), [&](std::size_t first, std::size_t count) {
        out += "\tsetAttr" + countFlag(points.size(), first) + range("vt", first, count) + " ";
        WordLines lines(out);
        for (std::size_t vertex = first; vertex < first + count; ++vertex) {
            for (int axis = 0; axis < 3; ++axis)
                lines.add(maNumber(points[vertex][axis]));
        }
        out += ";\n";
    });
    const MeshTopology& topology = *mesh.topology;
    inPieces(topology.edges.size(), [&](std::size_t first, std::size_t count) {
        out += "\tsetAttr" + countFlag(topology.edges.size(), first) + range("ed", first, count) + " ";
        WordLines lines(out);
        for (std::size_t edge = first; edge < first + count; ++edge) {
            for (const int value : topology.edges[edge])
                lines.add(std::to_string(value));
        }
        out += ";\n";
    });
    appendFaces(out, topology);
}

} // namespace host
