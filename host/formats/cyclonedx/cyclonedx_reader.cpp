#include "formats/cyclonedx/cyclonedx_reader.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "draft/graph_sink.h"
#include "formats/json_records.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

using nlohmann::json;

class CycloneDXReader final : public JsonRecords {
  public:
    explicit CycloneDXReader(Input& input)
        : bytes_(input), sink_(input.name(), input.limits(), [this] { return bytes_.line(); }) {
        sink_.addMissingEnds();
    }

    GraphDraft read() {
        parseJson(bytes_, *this, {"bomFormat", "specVersion"});
        return sink_.finish();
    }

    [[nodiscard]] bool wants(const JsonPath& path) const override {
        if (path.depth() == 1) {
            return isOneOf(path.last().key,
                           {"$schema", "bomFormat", "specVersion", "serialNumber", "version"});
        }
        return path.depth() == 2 &&
               (path.is({"metadata", path.last().key}) || path.is({"components", "*"}) ||
                path.is({"services", "*"}) || path.is({"dependencies", "*"}));
    }

    void take(const JsonPath& path, const json& value) override;

  private:
    static bool isOneOf(std::string_view key, std::initializer_list<std::string_view> keys) {
        return std::ranges::find(keys, key) != keys.end();
    }
    void addNode(const json& component, bool isService);
    void addProperties(NodeNumber node, const json& component);
    void addProperty(NodeNumber node, const std::string& key, const json& value);
    void addNamedValues(NodeNumber node, const json& values, const char* nameKey,
                        const char* valueKey);
    void addEdges(const json& dependency);
    void setGraphProperty(const std::string& key, const json& value);

    JsonBytes bytes_;
    GraphSink sink_;
};

std::string licenceOf(const json& choice) {
    const json& licence =
        choice.is_object() && choice.contains("license") ? choice["license"] : choice;
    for (const char* key : {"expression", "id", "name"}) {
        if (std::string text = memberText(licence, key); !text.empty()) {
            return text;
        }
    }
    return textOf(choice);
}

std::string licencesOf(const json& choices) {
    std::vector<std::string> licences;
    for (const json& choice : choices) {
        licences.push_back(licenceOf(choice));
    }
    std::ranges::sort(licences);
    return fmt::format("{}", fmt::join(licences, ", "));
}

std::string nameOf(const json& component) {
    const std::string group = memberText(component, "group");
    const std::string name = memberText(component, "name");
    return group.empty() ? name : group + "/" + name;
}

void CycloneDXReader::take(const JsonPath& path, const json& value) {
    if (path.is({"components", "*"}) || path.is({"metadata", "component"})) {
        addNode(value, false);
    } else if (path.is({"services", "*"})) {
        addNode(value, true);
    } else if (path.is({"dependencies", "*"})) {
        addEdges(value);
    } else {
        setGraphProperty(path.last().key, value);
    }
}

void CycloneDXReader::addNode(const json& component, bool isService) {
    if (!component.is_object()) {
        bytes_.fail("component is not an object");
    }
    const std::string name = nameOf(component);
    const std::string url = memberText(component, "purl");
    const std::string version = memberText(component, "version");
    std::string ref = memberText(component, "bom-ref");
    const bool hasRef = !ref.empty();
    if (!hasRef) {
        ref = !url.empty() ? url : version.empty() ? name : name + "@" + version;
    }
    if (ref.empty()) {
        bytes_.fail("component without bom-ref, purl and name");
    }
    // One without a reference of its own cannot be distinguished from its equals.
    const NodeNumber node = hasRef ? sink_.addNode(ref) : sink_.addNodeOnce(ref);
    sink_.setName(node, name.empty() ? ref : name);
    if (isService) {
        sink_.setType(node, "service");
    }
    if (!url.empty()) {
        sink_.addIdCandidate(node, withoutVersion(url));
        sink_.addIdCandidate(node, url);
    }
    addProperties(node, component);
    for (const char* nested : {"components", "services"}) {
        if (const auto found = component.find(nested); found != component.end()) {
            for (const json& child : *found) {
                addNode(child, nested == std::string_view("services"));
            }
        }
    }
}

void CycloneDXReader::addProperties(NodeNumber node, const json& component) {
    for (const auto& [key, value] : component.items()) {
        if (!isOneOf(key, {"bom-ref", "name", "group", "components", "services"})) {
            addProperty(node, key, value);
        }
    }
}

void CycloneDXReader::addProperty(NodeNumber node, const std::string& key, const json& value) {
    if (key == "licenses" && value.is_array()) {
        sink_.setProperty(node, key, licencesOf(value));
    } else if (key == "hashes" && value.is_array()) {
        addNamedValues(node, value, "alg", "content");
    } else if (key == "properties" && value.is_array()) {
        addNamedValues(node, value, "name", "value");
    } else {
        sink_.setProperty(node, key, textOf(value));
    }
}

void CycloneDXReader::addNamedValues(NodeNumber node, const json& values, const char* nameKey,
                                     const char* valueKey) {
    // A name may occur several times, in any order.
    std::map<std::string, std::set<std::string>> valuesByName;
    for (const json& value : values) {
        valuesByName[memberText(value, nameKey)].insert(memberText(value, valueKey));
    }
    for (const auto& [name, named] : valuesByName) {
        sink_.setProperty(node, name, fmt::format("{}", fmt::join(named, ", ")));
    }
}

void CycloneDXReader::addEdges(const json& dependency) {
    const std::string ref = memberText(dependency, "ref");
    if (ref.empty()) {
        bytes_.fail("dependency without \"ref\"");
    }
    for (const auto& [member, type] :
         {std::pair("dependsOn", "depends"), std::pair("provides", "provides")}) {
        if (const auto found = dependency.find(member); found != dependency.end()) {
            for (const json& end : *found) {
                sink_.set(sink_.addEdge(ref, textOf(end)), EdgeColumn::type, type);
            }
        }
    }
}

void CycloneDXReader::setGraphProperty(const std::string& key, const json& value) {
    const std::string text = textOf(value);
    if (key == "specVersion" && !isOneOf(text, {"1.4", "1.5", "1.6"})) {
        sink_.warn(
            fmt::format("unsupported CycloneDX version {}; read like 1.4 to 1.6", inQuotes(text)));
    }
    sink_.setGraphProperty(key, text);
}

}  // namespace

bool looksLikeCycloneDX(std::string_view firstBytes) {
    const auto keys = outermostKeys(firstBytes);
    return std::ranges::find(keys, "bomFormat") != keys.end() ||
           std::ranges::find(keys, "specVersion") != keys.end();
}

GraphDraft readCycloneDX(Input& input) {
    return CycloneDXReader(input).read();
}

std::string withoutVersion(std::string_view packageURL) {
    const std::size_t fragment = std::min(packageURL.find('#'), packageURL.size());
    const std::string_view subpath = packageURL.substr(fragment);
    std::string_view package = packageURL.substr(0, fragment);
    package = package.substr(0, package.find('?'));
    const std::size_t version = package.rfind('@');
    const std::size_t name = package.rfind('/');
    if (version != std::string_view::npos &&
        (name == std::string_view::npos || version > name + 1)) {
        package = package.substr(0, version);
    }
    return std::string(package).append(subpath);
}

}  // namespace depcompare
