#include "support/toolModel.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace testing_support {

namespace {

double narrowed(double number)
{
    return static_cast<double>(static_cast<float>(number));
}

bool storesDoubles(const std::string& mode)
{
    return mode == "skinCluster" || mode == "dualQuaternion";
}

/// While dragging: skins stay in 0..1; elsewhere the lower clamp, then the upper one, then single precision.
double liveWeight(const ToolModel::Settings& settings, double old, double change)
{
    double weight = old + change;
    if (storesDoubles(settings.mode))
        return std::min(std::max(weight, 0.0), 1.0);
    if (settings.clampMin)
        weight = std::max(weight, settings.low);
    if (settings.clampMax)
        weight = std::min(weight, settings.high);
    return narrowed(weight);
}

/// When redone: in every mode the upper clamp, then the lower one, in the mode's precision at each step.
double redoneWeight(const ToolModel::Settings& settings, double old, double change)
{
    const auto kept = [&](double weight) { return storesDoubles(settings.mode) ? weight : narrowed(weight); };
    double weight = kept(old + change);
    if (settings.clampMax)
        weight = kept(std::min(weight, settings.high));
    if (settings.clampMin)
        weight = kept(std::max(weight, settings.low));
    return weight;
}

} // namespace

std::vector<double> ToolModel::withRoom(std::vector<double> row, std::size_t influence, double weight)
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

std::vector<double>& ToolModel::plain(const std::string& mode, int mesh)
{
    const bool firstOnly = mode == "blendShapeTarget" || mode == "blendShapeBase";
    return weights.plain[{mode, firstOnly ? 0 : mesh}];
}

void ToolModel::readOld(Entry& entry)
{
    for (const Piece& piece : entry.pieces) {
        std::vector<double> old;
        Rows rows;
        for (const int vertex : piece.vertices) {
            const auto v = static_cast<std::size_t>(vertex);
            if (entry.settings.mode == "skinCluster")
                rows.push_back(weights.skin[static_cast<std::size_t>(piece.mesh)][v]);
            else
                old.push_back(plain(entry.settings.mode, piece.mesh)[v]);
        }
        entry.old.push_back(std::move(old));
        entry.oldRows.push_back(std::move(rows));
    }
}

void ToolModel::push(Entry entry)
{
    entries.resize(done);
    entries.push_back(std::move(entry));
    ++done;
}

void ToolModel::stroke(const Pieces& pieces, double offset, const Selection& before)
{
    Entry entry;
    entry.settings = settings;
    entry.selects = before != selection;
    entry.before = before;
    entry.after = selection;
    if (offset != 0) {
        entry.kind = Entry::kStroke;
        entry.pieces = pieces;
        entry.offset = offset;
        readOld(entry);
        writeStroke(entry, true);
    }
    if (offset != 0 || entry.selects)
        push(std::move(entry));
}

void ToolModel::select(const Selection& after)
{
    Entry entry;
    entry.selects = true;
    entry.before = selection;
    entry.after = selection = after;
    push(std::move(entry));
}

void ToolModel::writeStroke(const Entry& entry, bool live)
{
    const bool skin = entry.settings.mode == "skinCluster";
    for (std::size_t p = 0; p < entry.pieces.size(); ++p) {
        const Piece& piece = entry.pieces[p];
        for (std::size_t k = 0; k < piece.vertices.size(); ++k) {
            const auto v = static_cast<std::size_t>(piece.vertices[k]);
            const double change = entry.offset * static_cast<double>(piece.falloff[k]);
            const double old = skin ? entry.oldRows[p][k][influence] : entry.old[p][k];
            const double weight =
                live ? liveWeight(entry.settings, old, change) : redoneWeight(entry.settings, old, change);
            if (skin) {
                std::vector<double>& row = weights.skin[static_cast<std::size_t>(piece.mesh)][v];
                row = withRoom(row, influence, weight);
            } else {
                plain(entry.settings.mode, piece.mesh)[v] = weight;
            }
        }
    }
}

void ToolModel::restore(const Entry& entry)
{
    for (std::size_t p = 0; p < entry.pieces.size(); ++p) {
        const Piece& piece = entry.pieces[p];
        // What a paste refused it leaves alone, its undo too.
        if (entry.kind == Entry::kPaste && entry.compatible && entry.pasted[p].empty())
            continue;
        for (std::size_t k = 0; k < piece.vertices.size(); ++k) {
            const auto v = static_cast<std::size_t>(piece.vertices[k]);
            if (entry.settings.mode == "skinCluster")
                weights.skin[static_cast<std::size_t>(piece.mesh)][v] = entry.oldRows[p][k];
            else
                plain(entry.settings.mode, piece.mesh)[v] = entry.old[p][k];
        }
    }
}

void ToolModel::copy(const Pieces& pieces)
{
    copied = pieces;
    copiedMode = settings.mode;
    Entry read;
    read.settings = settings;
    read.pieces = pieces;
    readOld(read);
    copiedRows = read.oldRows;
    copiedValues = read.old;
    if (settings.mode == "skinCluster")
        for (std::size_t p = 0; p < pieces.size(); ++p)
            for (const std::vector<double>& row : copiedRows[p])
                copiedValues[p].push_back(row[influence]);
}

std::vector<std::pair<std::size_t, std::size_t>> ToolModel::match(const Piece& target) const
{
    std::vector<std::pair<std::size_t, std::size_t>> found;
    std::size_t piece = 0; // a vertex beyond every match stays with the piece of the one before it
    for (const int vertex : target.vertices) {
        const std::vector<double>& from =
            restPoints[static_cast<std::size_t>(target.mesh)][static_cast<std::size_t>(vertex)];
        double best = 1000;
        std::size_t position = 0;
        for (std::size_t p = 0; p < copied.size(); ++p)
            for (std::size_t k = 0; k < copied[p].vertices.size(); ++k) {
                const std::vector<double>& to = restPoints[static_cast<std::size_t>(copied[p].mesh)]
                                                          [static_cast<std::size_t>(copied[p].vertices[k])];
                const double x = from[0] - to[0], y = from[1] - to[1], z = from[2] - to[2];
                const double distance = std::sqrt(x * x + y * y + z * z);
                if (distance < best) {
                    best = distance;
                    piece = p;
                    position = k;
                }
            }
        found.emplace_back(piece, position);
    }
    return found;
}

/// Empty when the object is refused. On a skin, value j of every row comes from what the target's vertex j
/// matched, with as many values as the copied object at the target's place has influences.
std::vector<double> ToolModel::pastedValues(const Piece& target, std::size_t place) const
{
    const std::vector<std::pair<std::size_t, std::size_t>> matches = match(target);
    std::vector<double> values;
    if (settings.mode != "skinCluster") {
        for (const auto& [piece, position] : matches)
            values.push_back(narrowed(copiedValues[piece][position]));
        return values;
    }
    if (copiedMode != "skinCluster" || place >= copied.size())
        return {};
    const std::size_t influences = copiedRows[place].front().size();
    if (matches.size() < influences)
        return {};
    for (std::size_t j = 0; j < influences; ++j)
        values.push_back(narrowed(copiedRows[matches[j].first][matches[j].second][j]));
    return values;
}

void ToolModel::paste(const Pieces& pieces)
{
    if (copied.empty() || pieces.empty())
        return;
    Entry entry;
    entry.kind = Entry::kPaste;
    entry.settings = settings;
    entry.pieces = pieces;
    entry.compatible = settings.mode != "skinCluster" || copiedMode == "skinCluster";
    readOld(entry);
    for (std::size_t p = 0; p < pieces.size(); ++p)
        entry.pasted.push_back(pastedValues(pieces[p], p));
    writePaste(entry);
    push(std::move(entry));
}

void ToolModel::writePaste(const Entry& entry)
{
    for (std::size_t p = 0; p < entry.pieces.size(); ++p) {
        const Piece& piece = entry.pieces[p];
        for (std::size_t k = 0; k < piece.vertices.size() && !entry.pasted[p].empty(); ++k) {
            const auto v = static_cast<std::size_t>(piece.vertices[k]);
            if (entry.settings.mode == "skinCluster")
                weights.skin[static_cast<std::size_t>(piece.mesh)][v] = entry.pasted[p];
            else
                plain(entry.settings.mode, piece.mesh)[v] = entry.pasted[p][k];
        }
    }
}

void ToolModel::undo()
{
    const Entry& entry = entries[--done];
    restore(entry);
    if (entry.selects)
        selection = entry.before;
}

void ToolModel::redo()
{
    const Entry& entry = entries[done++];
    if (entry.kind == Entry::kStroke)
        writeStroke(entry, false);
    if (entry.kind == Entry::kPaste)
        writePaste(entry);
    if (entry.selects)
        selection = entry.after;
}

} // namespace testing_support
