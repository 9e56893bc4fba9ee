#include <fmt/format.h>

#include "formats/formats.h"
#include "formats/json_records.h"

namespace depcompare {

namespace {

using nlohmann::json;

class NpmListReader final : public JsonGraphReader {
  public:
    explicit NpmListReader(Input& input) : JsonGraphReader(input) {}

    GraphDraft read() {
        parse({"dependencies"}, {"name", "version", "problems", "extraneous", "overridden",
                                 "resolved", "private", "path", "invalid"});
        // The root is complete only now.
        const std::string name = rootName_.empty() ? "(root)" : rootName_;
        const std::string root = addPackage(name, rootVersion_);
        for (const std::string& id : needed_) {
            sink_.addEdge(root, id);
        }
        return sink_.finish();
    }

    [[nodiscard]] bool wants(const JsonPath& path) const override {
        return path.is({"name"}) || path.is({"version"}) || path.is({"dependencies", "{}"});
    }

    void take(const JsonPath& path, const json& value) override {
        if (path.is({"name"})) {
            rootName_ = textOf(value);
        } else if (path.is({"version"})) {
            rootVersion_ = textOf(value);
        } else if (const std::string id = addTree(path.last().key, value); !id.empty()) {
            needed_.push_back(id);
        }
    }

  private:
    std::string addPackage(const std::string& name, const std::string& version) {
        const std::string id = version.empty() ? name : fmt::format("{}@{}", name, version);
        const NodeNumber node = sink_.addNodeOnce(id);
        sink_.setName(node, name);
        if (!version.empty()) {
            sink_.addIdCandidate(node, name);
            sink_.setProperty(node, "version", version);
        }
        return id;
    }

    /// Returns: the ID of the package; none for an optional one that is not installed.
    std::string addTree(const std::string& name, const json& package) {
        if (!package.is_object()) {
            bytes_.fail(
                fmt::format("dependency \"{}\" is not an object; is this a package.json?", name));
        }
        const bool isMissing = isTrue(package, "missing");
        const std::string version = memberText(package, "version");
        if (version.empty() && !isMissing) {
            return "";
        }
        const std::string id = addPackage(name, isMissing ? "" : version);
        if (isMissing) {
            sink_.setType(sink_.addNodeOnce(id), "missing");
        } else if (const json& resolved = memberOf(package, "resolved"); resolved.is_string()) {
            sink_.setProperty(sink_.addNodeOnce(id), "resolved", textOf(resolved));
        }
        if (const json& inner = memberOf(package, "dependencies"); inner.is_object()) {
            for (const auto& [innerName, dependency] : inner.items()) {
                if (const std::string end = addTree(innerName, dependency); !end.empty()) {
                    sink_.addEdge(id, end);
                }
            }
        }
        return id;
    }

    std::string rootName_;
    std::string rootVersion_;
    std::vector<std::string> needed_;  // by the root
};

}  // namespace

bool looksLikeNpmList(const JsonShape& shape) {
    return (shape.has({"dependencies", "*", "version"}) || shape.has({"problems"})) &&
           shape.has({"dependencies"}, JsonKind::object) && !shape.has({"lockfileVersion"});
}

GraphDraft readNpmList(Input& input) {
    return NpmListReader(input).read();
}

}  // namespace depcompare
