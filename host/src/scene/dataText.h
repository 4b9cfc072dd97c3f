#pragma once

#include "graph/data.h"

#include <ImathMatrix.h>

#include <string>
#include <utility>
#include <vector>

namespace host {

class MaCursor;

/// Values of data types as `setAttr -type` writes them.

/// Reads the value that follows `-type "TYPE"`: component lists, the array types, curves, surfaces and
/// lattices. Types that the host does not interpret become OpaqueData with the words as they came.
/// Throws host::Error naming file and line when the words do not fit the type.
DataRef readData(MaCursor& words, const std::string& type);

/// Appends ` -type "TYPE" ...` with the words of the value. Meshes are not written by this.
void appendData(std::string& out, const Data& data);

/// The pairs of `-type "attributeAlias" {"smile","weight[0]", ...}`: alias and attribute path.
std::vector<std::pair<std::string, std::string>> readAliases(MaCursor& words);
void appendAliases(std::string& out, const std::vector<std::pair<std::string, std::string>>& aliases);

/// The matrix that the 37 words of `-type "matrix" "xform"` stand for (the cursor is behind "xform"): scale,
/// rotation in radians and its order, translation, shear, the pivots and their translations, rotate
/// and joint orientations as quaternions x y z w, the parent's scale to take back and whether to do so.
Imath::M44d readXform(MaCursor& words);

/// A matrix in row order, as sixteen words.
Imath::M44d readMatrix(MaCursor& words);
void appendMatrix(std::string& out, const Imath::M44d& matrix);

/// Appends words and breaks the line now and then, as files do.
class WordLines {
public:
    explicit WordLines(std::string& text) : out(text) {}
    void add(const std::string& word);
    void breakLine();

private:
    std::string& out;
    int inLine = 0;
};

} // namespace host
