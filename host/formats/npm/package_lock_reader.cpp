#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "formats/formats.h"
#include "formats/json_records.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

using nlohmann::json;

constexpr std::string_view modules = "node_modules/";

class PackageLockReader final : public JsonGraphReader {
  public:
    explicit PackageLockReader(Input& input) : JsonGraphReader(input) {}

    GraphDraft read() {
        parse({.records = {valuesAt({"name"}), objectsAt({"packages", "{}"})},
               .required = {"lockfileVersion"},
               .known = {"version", "requires", "dependencies", "packageIntegrity",
                         "preserveSymlinks"}});
        if (targets_.empty()) {
            bytes_.fail(
                "no \"packages\", as in lockfileVersion 1; npm install "
                "--package-lock-only --lockfile-version 3 writes the file anew");
        }
        addEdges();
        return sink_.finish();
    }

    void take(const JsonPath& path, const json& value) override {
        if (path.is({"name"})) {
            rootName_ = textOf(value);
        } else {
            addPackage(path.last().key, value);
        }
    }

  private:
    struct Need {
        std::string folder;  // of the package that needs
        std::string name;    // of the package that is needed
        std::string type;
    };

    void addPackage(const std::string& folder, const json& package) {
        if (isTrue(package, "link")) {
            targets_[folder] = memberText(package, "resolved");
            return;
        }
        targets_[folder] = folder;
        const NodeNumber node = sink_.addNode(folder);
        const std::string name = nameOf(folder, package);
        const std::string version = memberText(package, "version");
        sink_.setName(node, name);
        sink_.addIdCandidate(node, name);
        sink_.addIdCandidate(node, fmt::format("{}@{}", name, version));
        for (const auto& [key, value] : package.items()) {
            if (value.is_primitive() && !value.is_null() && key != "name") {
                sink_.setProperty(node, key, textOf(value));
            }
        }
        constexpr std::pair<const char*, const char*> kinds[] = {
            {"dependencies", "depends"},
            {"devDependencies", "dev"},
            {"optionalDependencies", "optional"},
            {"peerDependencies", "peer"},
        };
        for (const auto& [member, type] : kinds) {
            for (const auto& [needs, range] : membersOf(package, member, sink_).items()) {
                needs_.push_back({.folder = folder, .name = needs, .type = type});
            }
        }
    }

    [[nodiscard]] std::string nameOf(const std::string& folder, const json& package) const {
        if (std::string name = memberText(package, "name"); !name.empty()) {
            return name;
        }
        const std::size_t last = folder.rfind(modules);
        return last != std::string::npos ? folder.substr(last + modules.size())
               : folder.empty()          ? rootName_
                                         : folder;
    }

    // As node does: in the package's own folder first, then in those around it.
    void addEdges() {
        std::multiset<std::string> missing;
        for (const Need& need : needs_) {
            if (const std::string* const found = find(need.folder, need.name)) {
                sink_.set(sink_.addEdge(need.folder, *found), EdgeColumn::type, need.type);
            } else if (need.type != "optional" && need.type != "peer") {
                missing.insert(need.name);
            }
        }
        if (!missing.empty()) {
            sink_.warn(fmt::format("dependencies without a package: {} (first: {})", missing.size(),
                                   inQuotes(*missing.begin())));
        }
    }

    [[nodiscard]] const std::string* find(std::string folder, const std::string& name) const {
        for (;;) {
            const auto found = targets_.find(
                fmt::format("{}{}{}{}", folder, folder.empty() ? "" : "/", modules, name));
            if (found != targets_.end()) {
                return &found->second;
            }
            if (folder.empty()) {
                return nullptr;
            }
            const std::size_t end = folder.rfind('/');
            folder.resize(end == std::string::npos ? 0 : end);
        }
    }

    std::string rootName_;
    std::map<std::string, std::string> targets_;  // by folder; a link's is another folder
    std::vector<Need> needs_;
};

}  // namespace

bool looksLikePackageLock(const JsonShape& shape) {
    return shape.has({"lockfileVersion"});
}

GraphDraft readPackageLock(Input& input) {
    return PackageLockReader(input).read();
}

}  // namespace depcompare
