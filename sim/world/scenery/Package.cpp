#include "world/scenery/Package.h"

#include <algorithm>
#include <filesystem>

#include "world/files/JsonTree.h"
#include "world/files/TextFile.h"

namespace sim::world {
namespace {

constexpr const char* kSceneryFolder = "Scenery/";
constexpr const char* kIndexName = "package.json";

Region ReadRegion(const JsonValue& value) {
  value.AllowOnly({"south_deg", "north_deg", "west_deg", "east_deg"});
  const Region region{.south = value["south_deg"].Number(-90.0, 90.0),
                      .north = value["north_deg"].Number(-90.0, 90.0),
                      .west = value["west_deg"].Number(-180.0, 180.0),
                      .east = value["east_deg"].Number(-180.0, 180.0)};
  if (region.south > region.north) value["south_deg"].Fail("this lies north of \"north_deg\"");
  if (region.west > region.east) value["west_deg"].Fail("this lies east of \"east_deg\"");
  return region;
}

PackageObject ReadObject(const JsonValue& value, const std::string& folder,
                         const std::function<bool(const std::string&)>& isFile) {
  value.AllowOnly({"path", "file", "region"});
  PackageObject object;
  object.virtualPath = value["path"].Text();
  if (object.virtualPath.empty()) value["path"].Fail("this must not be empty");
  object.file = folder + value["file"].Text();
  if (!isFile(object.file)) value["file"].Fail("there is no file " + object.file);
  if (const auto region = value.Find("region")) object.region = ReadRegion(*region);
  return object;
}

// The folders with an index, each relative to the simulator folder and ending in "/", in order.
std::vector<std::string> FindPackages(const std::string& root) {
  std::vector<std::string> folders;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(root + kSceneryFolder, error)) {
    const std::string folder = kSceneryFolder + entry.path().filename().string() + "/";
    if (std::filesystem::is_regular_file(root + folder + kIndexName, error)) folders.push_back(folder);
  }
  std::ranges::sort(folders);
  return folders;
}

}  // namespace

Package ParsePackage(const std::string& text, const std::string& fileName, const std::string& folder,
                     const std::function<bool(const std::string& path)>& isFile) {
  const JsonValue file = ParseJson(text, fileName);
  file.AllowOnly({"name", "objects"});
  Package package{.name = file["name"].Text(), .folder = folder, .objects = {}};
  for (const JsonValue& object : file["objects"].Elements())
    package.objects.push_back(ReadObject(object, folder, isFile));
  return package;
}

std::vector<std::string> SceneryLibrary::Read() {
  std::vector<std::string> problems;
  std::vector<Package> found;
  for (const std::string& folder : FindPackages(root)) {
    if (closed.contains(folder)) continue;
    const std::string fileName = root + folder + kIndexName;
    try {
      found.push_back(ParsePackage(ReadTextFile(fileName), fileName, folder, [this](const std::string& path) {
        return std::filesystem::is_regular_file(root + path);
      }));
    } catch (const FileError& error) {
      problems.emplace_back(error.what());
      const auto before = std::ranges::find(packages, folder, &Package::folder);
      if (before != packages.end()) found.push_back(std::move(*before));
    }
  }
  packages = std::move(found);
  return problems;
}

std::vector<std::string> SceneryLibrary::SetOpen(const std::string& folder, bool isOpen) {
  if (isOpen ? closed.erase(folder) > 0 : closed.insert(folder).second) return Read();
  return {};
}

std::vector<std::string> SceneryLibrary::Lookup(const std::string& virtualPath, const Place& place) const {
  std::vector<std::string> files;
  for (const Package& package : packages)
    for (const PackageObject& object : package.objects)
      if (object.virtualPath == virtualPath && object.region.Contains(place)) files.push_back(object.file);
  return files;
}

}  // namespace sim::world
