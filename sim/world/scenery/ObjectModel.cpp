// tinyobjloader reads what is right and guesses at the rest, so every line is checked before it sees the
// text.
#include "world/scenery/ObjectModel.h"

#include <tiny_obj_loader.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <sstream>
#include <string_view>

#include "world/files/TextFile.h"

namespace sim::world {
namespace {

constexpr std::size_t kMostCorners = 64;  // of one face

std::string Quoted(std::string_view word) { return std::string(1, '"').append(word).append("\""); }

class LineChecker {
 public:
  LineChecker(const std::string& file, const std::string& materialFolder)
      : fileName(file), folder(materialFolder) {}

  void Check(std::string_view text) {
    ++line;
    std::vector<std::string_view> words = Words(text);
    if (words.empty() || words.front().starts_with('#')) return;
    const std::string_view keyword = words.front();
    words.erase(words.begin());
    if (keyword == "v") {
      CheckNumbers(words, 3);
      ++points;
    } else if (keyword == "vn") {
      CheckNumbers(words, 3);
    } else if (keyword == "vt") {
      CheckNumbers(words, 1);
    } else if (keyword == "f") {
      CheckFace(words);
    } else if (keyword == "mtllib") {
      CheckMaterials(words);
    } else if (keyword != "o" && keyword != "g" && keyword != "s" && keyword != "usemtl") {
      Fail(std::string("there is no ") + Quoted(keyword) + " here");
    }
  }

  int Faces() const { return faces; }

 private:
  [[noreturn]] void Fail(const std::string& problem) const { throw FileError(fileName, line, problem); }

  static std::vector<std::string_view> Words(std::string_view text) {
    constexpr std::string_view kSpaces = " \t\r";
    std::vector<std::string_view> words;
    for (std::size_t start = text.find_first_not_of(kSpaces); start != std::string_view::npos;) {
      const std::size_t end = std::min(text.find_first_of(kSpaces, start), text.size());
      words.push_back(text.substr(start, end - start));
      start = text.find_first_not_of(kSpaces, end);
    }
    return words;
  }

  void CheckNumbers(const std::vector<std::string_view>& words, std::size_t fewest) const {
    if (words.size() < fewest) Fail("there are fewer than " + std::to_string(fewest) + " numbers");
    for (const std::string_view word : words) {
      float number = 0.0F;
      const std::from_chars_result result = std::from_chars(word.data(), word.data() + word.size(), number);
      if (result.ec != std::errc() || result.ptr != word.data() + word.size() || !std::isfinite(number))
        Fail(Quoted(word) + " is no number");
    }
  }

  // Corners are points by number, from 1, or from the last backward, each perhaps with others behind a "/".
  void CheckFace(const std::vector<std::string_view>& words) {
    if (words.size() < 3) Fail("a face needs three corners");
    if (words.size() > kMostCorners) Fail("a face has more than 64 corners");
    for (const std::string_view word : words) {
      int number = 0;
      const std::string_view corner = word.substr(0, word.find('/'));
      const std::from_chars_result result =
          std::from_chars(corner.data(), corner.data() + corner.size(), number);
      const bool isThere = number < 0 ? number >= -points : number > 0 && number <= points;
      if (result.ec != std::errc() || result.ptr != corner.data() + corner.size() || !isThere ||
          word.find_first_not_of("0123456789/-") != std::string_view::npos)
        Fail(Quoted(word) + " is no corner of the " + std::to_string(points) + " that stand above");
    }
    ++faces;
  }

  void CheckMaterials(const std::vector<std::string_view>& words) const {
    if (words.empty()) Fail("the name of a material file is missing");
    for (const std::string_view word : words) {
      const std::string path = folder + "/" + std::string(word);
      std::error_code error;
      if (!std::filesystem::is_regular_file(path, error)) Fail("there is no material file " + path);
    }
  }

  const std::string& fileName;
  const std::string& folder;
  int line = 0;
  int points = 0;
  int faces = 0;
};

void CheckEveryLine(const std::string& text, const std::string& fileName, const std::string& folder) {
  // What comes behind would not be seen by everybody who reads the file.
  if (text.find('\0') != std::string::npos) throw FileError(fileName, 0, "this is no text");
  LineChecker checker(fileName, folder);
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) checker.Check(line);
  if (checker.Faces() == 0) throw FileError(fileName, 0, "the model has no faces");
}

void AddTriangles(const tinyobj::mesh_t& mesh, const std::vector<tinyobj::material_t>& materials,
                  ObjectModel& model) {
  for (std::size_t face = 0; face < mesh.num_face_vertices.size(); ++face) {
    ObjectModel::Triangle triangle{};
    for (std::size_t corner = 0; corner < 3; ++corner)
      triangle.corners[corner] = mesh.indices[3 * face + corner].vertex_index;
    const int material = mesh.material_ids[face];
    for (std::size_t part = 0; part < 3; ++part)
      triangle.colour[part] =
          material < 0 ? 1.0F
                       : static_cast<float>(materials[static_cast<std::size_t>(material)].diffuse[part]);
    model.triangles.push_back(triangle);
  }
}

}  // namespace

ObjectModel ParseObjectModel(const std::string& text, const std::string& fileName,
                             const std::string& folder) {
  CheckEveryLine(text, fileName, folder);
  tinyobj::attrib_t attributes;
  std::vector<tinyobj::shape_t> shapes;
  std::vector<tinyobj::material_t> materials;
  std::string warning;
  std::string problem;
  std::istringstream stream(text);
  tinyobj::MaterialFileReader materialReader(folder);
  if (!tinyobj::LoadObj(&attributes, &shapes, &materials, &warning, &problem, &stream, &materialReader))
    throw FileError(fileName, 0, problem.substr(0, problem.find('\n')));

  ObjectModel model;
  model.fileName = fileName;
  for (std::size_t index = 0; index + 2 < attributes.vertices.size(); index += 3)
    model.points.push_back({static_cast<double>(attributes.vertices[index]),
                            static_cast<double>(attributes.vertices[index + 1]),
                            static_cast<double>(attributes.vertices[index + 2])});
  for (const tinyobj::shape_t& shape : shapes) AddTriangles(shape.mesh, materials, model);
  if (model.points.empty() || model.triangles.empty())
    throw FileError(fileName, 0, "the model has no triangles");
  model.smallest = model.largest = model.points.front();
  for (const Vector& point : model.points) {
    model.smallest = {std::min(model.smallest.x, point.x), std::min(model.smallest.y, point.y),
                      std::min(model.smallest.z, point.z)};
    model.largest = {std::max(model.largest.x, point.x), std::max(model.largest.y, point.y),
                     std::max(model.largest.z, point.z)};
  }
  return model;
}

ObjectModel ReadObjectModel(const std::string& fileName) {
  return ParseObjectModel(ReadTextFile(fileName), fileName,
                          std::filesystem::path(fileName).parent_path().string());
}

}  // namespace sim::world
