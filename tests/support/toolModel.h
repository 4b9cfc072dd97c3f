#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

/// The tool as plain arrays: what strokes, copies, pastes, selections, undos and redos do to the weights of a
/// few meshes. It asks nobody: what the platform decides (where the mouse leads, what is picked, how far a
/// soft selection reaches) is told to it.
class ToolModel {
public:
    using Rows = std::vector<std::vector<double>>;
    /// The edited vertices of a mesh, in component order, and their falloffs.
    struct Piece {
        int mesh;
        std::vector<int> vertices;
        std::vector<float> falloff;
    };
    using Pieces = std::vector<Piece>;
    using Selection = std::map<int, std::vector<int>>; ///< mesh -> vertices, ascending; none empty

    struct Settings {
        std::string mode = "default";
        bool clampMin = true, clampMax = false;
        double low = 0, high = 1;
    };
    struct Weights {
        /// Mode and mesh -> a number per vertex; in the blend shape modes all meshes share mesh 0's.
        std::map<std::pair<std::string, int>, std::vector<double>> plain;
        std::vector<Rows> skin; ///< per mesh, a row per vertex
    };

    Settings settings;
    Weights weights;
    Selection selection;
    std::vector<Rows> restPoints; ///< per mesh
    std::size_t influence = 0;    ///< the column that strokes on skins edit

    /// A stroke that ended at this offset; 0 writes nothing. `before` is the selection of the press, which
    /// the press may have changed.
    void stroke(const Pieces& pieces, double offset, const Selection& before);
    void select(const Selection& after);
    void copy(const Pieces& pieces);
    void paste(const Pieces& pieces);
    void undo();
    void redo();
    std::size_t undoCount() const { return done; }
    std::size_t redoCount() const { return entries.size() - done; }

    /// One row with the influence's weight changed: the others share what is left.
    static std::vector<double> withRoom(std::vector<double> row, std::size_t influence, double weight);
    std::vector<double>& plain(const std::string& mode, int mesh);

private:
    struct Entry {
        enum Kind { kSelect, kStroke, kPaste } kind = kSelect;
        Settings settings;
        Pieces pieces;
        double offset = 0;
        std::vector<std::vector<double>> old; ///< per piece
        std::vector<Rows> oldRows;
        std::vector<std::vector<double>> pasted; ///< per piece; empty: nothing was written
        bool compatible = true; ///< a paste of a copy that goes with the mode: an empty piece was refused
        bool selects = false;
        Selection before, after;
    };
    void readOld(Entry& entry);
    void push(Entry entry);
    void writeStroke(const Entry& entry, bool live);
    void writePaste(const Entry& entry);
    void restore(const Entry& entry);
    /// Per target vertex: copied piece and position in it.
    std::vector<std::pair<std::size_t, std::size_t>> match(const Piece& target) const;
    std::vector<double> pastedValues(const Piece& target, std::size_t place) const;

    std::vector<Entry> entries;
    std::size_t done = 0;
    Pieces copied;
    std::string copiedMode;
    std::vector<Rows> copiedRows;                  ///< mode skinCluster
    std::vector<std::vector<double>> copiedValues; ///< per piece, what the plain modes take
};

} // namespace testing_support
