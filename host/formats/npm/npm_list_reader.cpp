#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "formats/formats.h"
#include "formats/json_records.h"

namespace depcompare {

namespace {

using nlohmann::json;

class NpmListReader final : public JsonGraphReader {
  public:
    explicit NpmListReader(Input& input) : JsonGraphReader(input) {
        sink_
            .foldEqualEdges();  // a package is listed with its dependencies wherever it is installed
    }

    GraphDraft read() {
        parse({.records = {valuesAt({"name"}), valuesAt({"version"}),
                           objectsAt({"dependencies", "{}"})},
               .required = {"dependencies", "name", "version"},
               .known = {"problems", "extraneous", "overridden", "resolved", "private", "path",
                         "invalid"}});
        // The root is complete only now.
        const std::string name = rootName_.empty() ? "(root)" : rootName_;
        const std::string root = addPackage(name, rootVersion_);
        for (const std::string& id : needed_) {
            sink_.addEdge(root, id);
        }
        for (const auto& [id, needed] : bare_) {
            if (withoutVersion_.contains(needed)) {
                sink_.addEdge(id.empty() ? root : id, needed);
            }
        }
        return sink_.finish();
    }

    void take(const JsonPath& path, const json& value) override {
        if (path.is({"name"})) {
            rootName_ = textOf(value);
        } else if (path.is({"version"})) {
            rootVersion_ = textOf(value);
        } else if (isBare(value)) {
            bare_.emplace_back("", path.last().key);
        } else {
            needed_.push_back(addTree(path.last().key, value));
        }
    }

  private:
    // An optional package that is not installed; but a package without a version, as those of
    // workspaces may be, is written like this, too, wherever it is not listed for the first time.
    static bool isBare(const json& package) {
        constexpr const char* ofInstalled[] = {"version", "resolved", "dependencies", "missing"};
        return package.is_object() && std::ranges::none_of(ofInstalled, [&](const char* key) {
                   return package.contains(key);
               });
    }

    std::string addPackage(const std::string& name, const std::string& version) {
        std::string id = version.empty() ? name : fmt::format("{}@{}", name, version);
        if (const auto node = sink_.addNewNode(id)) {
            sink_.setName(*node, name);
            if (!version.empty()) {
                sink_.addIdCandidate(*node, name);
                sink_.setProperty(*node, "version", version);
            }
        }
        return id;
    }

    /// Returns: the ID of the package.
    std::string addTree(const std::string& name, const json& package) {
        if (!package.is_object()) {
            bytes_.fail(
                fmt::format("dependency \"{}\" is not an object; is this a package.json?", name));
        }
        const bool isMissing = isTrue(package, "missing");
        const std::string version = memberText(package, "version");
        std::string id = addPackage(name, isMissing ? "" : version);
        if (isMissing) {
            sink_.setType(sink_.addNodeOnce(id), "missing");
        } else if (version.empty()) {
            withoutVersion_.insert(name);
        }
        if (const json& resolved = memberOf(package, "resolved"); resolved.is_string()) {
            sink_.setProperty(sink_.addNodeOnce(id), "resolved", textOf(resolved));
        }
        for (const auto& [innerName, dependency] :
             membersOf(package, "dependencies", sink_).items()) {
            if (isBare(dependency)) {
                bare_.emplace_back(id, innerName);
            } else {
                sink_.addEdge(id, addTree(innerName, dependency));
            }
        }
        return id;
    }

    std::string rootName_;
    std::string rootVersion_;
    std::vector<std::string> needed_;  // by the root
    std::set<std::string> withoutVersion_;
    std::vector<std::pair<std::string, std::string>> bare_;  // who needs them (empty: the root)
};

}  // namespace

bool looksLikeNpmList(const JsonShape& shape) {
    if (shape.has({"lockfileVersion"})) {
        return false;
    }
    if (shape.has({"dependencies"}, JsonKind::object)) {
        return shape.has({"dependencies", "*", "version"}) || shape.has({"problems"}) ||
               shape.has({"dependencies", "*", "overridden"});
    }
    // A project that needs nothing has a name and a version, and nothing else.
    const auto isOfProject = [](const JsonShape::Value& value) {
        return value.path.empty() || value.path[0] == "name" || value.path[0] == "version" ||
               value.path[0] == "problems";
    };
    return shape.has({"name"}, JsonKind::text) && shape.has({"version"}, JsonKind::text) &&
           std::ranges::all_of(shape.values, isOfProject);
}

GraphDraft readNpmList(Input& input) {
    return NpmListReader(input).read();
}

}  // namespace depcompare
