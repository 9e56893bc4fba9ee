#include "formats/cyclonedx/cyclonedx_reader.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "draft/edit_ids.h"
#include "draft/graph_sink.h"
#include "formats/json_records.h"
#include "formats/xml_parser.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

using nlohmann::json;

bool isOneOf(std::string_view key, std::initializer_list<std::string_view> keys) {
    return std::ranges::find(keys, key) != keys.end();
}

/// What the parts of a document mean, whichever way they are written.
class CycloneDXGraph {
  public:
    explicit CycloneDXGraph(GraphSink& sink) : sink_(sink) {
        for (const char* key : {"serialNumber", "timestamp", "tools"}) {
            sink_.declareBuildProperty(key);
        }
    }

    /// Takes a member of the document or an element of one of its lists.
    void take(std::string_view list, std::string_view member, const json& value);

  private:
    void addNode(const json& component, bool isService);
    void addProperties(NodeNumber node, const json& component);
    void addList(NodeNumber node, const std::string& key, const json& values);
    void addNamedValues(NodeNumber node, const json& values, const char* nameKey,
                        const char* valueKey);
    void addEdges(const json& dependency);
    void setGraphProperty(std::string_view key, const json& value);

    GraphSink& sink_;
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

void CycloneDXGraph::take(std::string_view list, std::string_view member, const json& value) {
    if (list == "components" || (list == "metadata" && member == "component")) {
        addNode(value, false);
    } else if (list == "services") {
        addNode(value, true);
    } else if (list == "dependencies") {
        addEdges(value);
    } else {
        setGraphProperty(member, value);
    }
}

void CycloneDXGraph::addNode(const json& component, bool isService) {
    if (!component.is_object()) {
        sink_.fail("component is not an object");
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
        sink_.fail("component without bom-ref, purl and name");
    }
    // One without a reference of its own cannot be distinguished from its equals.
    const NodeNumber node = hasRef ? sink_.addNode(ref) : sink_.addNodeOnce(ref);
    sink_.setName(node, name.empty() ? ref : name);
    if (isService) {
        sink_.setType(node, "service");
    }
    if (!url.empty()) {
        sink_.addIdCandidate(node, barePackageURL(url));
        sink_.addIdCandidate(node, url);
    }
    addProperties(node, component);
    for (const char* nested : {"components", "services"}) {
        for (const json& child : elementsOf(component, nested, sink_)) {
            addNode(child, nested == std::string_view("services"));
        }
    }
}

void CycloneDXGraph::addProperties(NodeNumber node, const json& component) {
    for (const auto& [key, value] : component.items()) {
        if (isOneOf(key, {"licenses", "hashes", "properties"}) && !value.is_null()) {
            addList(node, key, elementsOf(component, key.c_str(), sink_));
        } else if (!isOneOf(key, {"bom-ref", "name", "group", "components", "services"})) {
            sink_.setProperty(node, key, textOf(value));
        }
    }
}

void CycloneDXGraph::addList(NodeNumber node, const std::string& key, const json& values) {
    if (key == "licenses") {
        sink_.setProperty(node, key, licencesOf(values));
    } else if (key == "hashes") {
        addNamedValues(node, values, "alg", "content");
    } else {
        addNamedValues(node, values, "name", "value");
    }
}

void CycloneDXGraph::addNamedValues(NodeNumber node, const json& values, const char* nameKey,
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

void CycloneDXGraph::addEdges(const json& dependency) {
    const std::string ref = memberText(dependency, "ref");
    if (ref.empty()) {
        sink_.fail("dependency without \"ref\"");
    }
    for (const auto& [member, type] :
         {std::pair("dependsOn", "depends"), std::pair("provides", "provides")}) {
        for (const json& end : elementsOf(dependency, member, sink_)) {
            if (!end.is_string()) {
                sink_.fail(fmt::format("\"{}\" holds something else than references", member));
            }
            sink_.set(sink_.addEdge(ref, textOf(end)), EdgeColumn::type, type);
        }
    }
}

void CycloneDXGraph::setGraphProperty(std::string_view key, const json& value) {
    const std::string text = textOf(value);
    if (key == "specVersion" && !isOneOf(text, {"1.4", "1.5", "1.6"})) {
        sink_.warn(
            fmt::format("unsupported CycloneDX version {}; read like 1.4 to 1.6", inQuotes(text)));
    }
    sink_.setGraphProperty(key, text);
}

constexpr std::array<std::string_view, 9> leftOut = {
    "externalReferences", "compositions", "vulnerabilities", "annotations", "formulation",
    "declarations",       "definitions",  "properties",      "signature"};

class JsonReader final : public JsonGraphReader {
  public:
    explicit JsonReader(Input& input) : JsonGraphReader(input) {}

    GraphDraft read() {
        parse(
            {.records = {valuesAt({"$schema"}), valuesAt({"bomFormat"}), valuesAt({"specVersion"}),
                         valuesAt({"serialNumber"}), valuesAt({"version"}),
                         valuesAt({"metadata", "{}"}), objectsAt({"components", "*"}),
                         objectsAt({"services", "*"}), objectsAt({"dependencies", "*"})},
             .required = {"bomFormat", "specVersion"},
             .known = {leftOut.begin(), leftOut.end()}});
        return sink_.finish();
    }

    void take(const JsonPath& path, const json& value) override {
        graph_.take(path.depth() == 1 ? std::string_view() : path[0].key, path.last().key, value);
    }

  private:
    CycloneDXGraph graph_{sink_};
};

/// Makes of each element what the same part of a document in JSON is.
class XmlReader final : public XmlEvents {
  public:
    explicit XmlReader(Input& input)
        : input_(input), sink_(input.name(), input.limits(), [this] { return parser_.line(); }) {
        sink_.addMissingEnds();
    }

    GraphDraft read() {
        parser_.parse(input_, *this);
        sink_.warnOfUnknown("elements", unknown_);
        return sink_.finish();
    }

    void start(std::string_view element, const XmlAttributes& attributes) override {
        element.remove_prefix(element.find(':') + 1);  // a prefix, or nothing
        if (open_.empty()) {
            startDocument(element, attributes);
        }
        Element& opened = open_.emplace_back();
        opened.name = element;
        opened.isList = std::ranges::find(lists, element) != lists.end();
        for (const char* name :
             {"bom-ref", "type", "mime-type", "alg", "name", "ref", "acknowledgement"}) {
            if (const auto value = attributes.find(name)) {
                opened.members[name] = *value;
            }
        }
    }

    void end() override {
        Element element = std::move(open_.back());
        open_.pop_back();
        if (open_.empty()) {
            return;
        }
        if (open_.size() == 1) {
            noteOutermost(element.name);
            return;
        }
        json value = valueOf(element);
        Element& parent = open_.back();
        if (open_.size() == 2 && isOfRecords(parent.name)) {
            graph_.take(parent.name, element.name, value);
        } else if (parent.isList) {
            parent.items.push_back(std::move(value));
        } else if (parent.name == "dependency") {
            parent.members[element.name == "provides" ? "provides" : "dependsOn"].push_back(
                memberText(value, "ref"));
        } else {
            addMember(parent.members[element.name], std::move(value));
        }
    }

    void text(std::string_view part) override {
        if (!open_.empty()) {
            open_.back().text += part;
        }
    }

  private:
    struct Element {
        std::string name;
        std::string text;
        json members = json::object();
        json items = json::array();
        bool isList = false;
    };

    static constexpr std::array<std::string_view, 12> lists = {
        "components", "services", "hashes",    "licenses", "externalReferences", "properties",
        "authors",    "tags",     "omniborId", "swhid",    "endpoints",          "dependencies"};

    void startDocument(std::string_view element, const XmlAttributes& attributes) {
        constexpr std::string_view space = "cyclonedx.org/schema/bom/";
        const std::string_view spaces = attributes.find("xmlns").value_or("");
        const std::size_t version = spaces.find(space);
        if (element != "bom") {
            sink_.fail(fmt::format("not CycloneDX: the root element is {}", inQuotes(element)));
        }
        graph_.take("", "bomFormat", "CycloneDX");
        if (version != spaces.npos) {
            graph_.take("", "specVersion", std::string(spaces.substr(version + space.size())));
        }
        for (const char* name : {"serialNumber", "version"}) {
            if (const auto value = attributes.find(name)) {
                graph_.take("", name, std::string(*value));
            }
        }
    }

    void noteOutermost(const std::string& name) {
        if (isOfRecords(name)) {
            if (!known_.insert(name).second) {
                sink_.fail(fmt::format("the document has two elements {}", inQuotes(name)));
            }
        } else if (std::ranges::find(leftOut, name) == leftOut.end()) {
            unknown_.add(name);
        }
    }

    // An element that is repeated is an array.
    static void addMember(json& member, json value) {
        if (member.is_null()) {
            member = std::move(value);
            return;
        }
        if (!member.is_array()) {
            member = json::array({std::move(member)});
        }
        member.push_back(std::move(value));
    }

    /// Returns: whether the children of this outermost element are taken.
    static bool isOfRecords(std::string_view name) {
        return isOneOf(name, {"metadata", "components", "services", "dependencies"});
    }

    static json valueOf(Element& element) {
        if (element.isList) {
            return std::move(element.items);
        }
        if (element.name == "license") {
            return json::object({{"license", std::move(element.members)}});
        }
        if (element.name == "expression") {
            return json::object({{"expression", element.text}});
        }
        const bool isProperty = element.name == "property";
        const bool hasText = isProperty || element.name == "hash";
        if (element.members.empty() && !hasText) {
            return element.text;
        }
        if (hasText || element.text.find_first_not_of(" \t\r\n") != std::string::npos) {
            element.members[isProperty ? "value" : "content"] = element.text;
        }
        return std::move(element.members);
    }

    Input& input_;
    XmlParser parser_;
    GraphSink sink_;
    CycloneDXGraph graph_{sink_};
    std::vector<Element> open_;
    std::set<std::string> known_;  // outermost elements that are taken
    QuotedNames unknown_;
};

}  // namespace

bool looksLikeCycloneDX(const JsonShape& shape) {
    return shape.has({"bomFormat"}) || shape.has({"specVersion"});
}

bool looksLikeCycloneDXXml(std::string_view firstBytes) {
    return firstBytes.find("cyclonedx.org/schema/bom/") != std::string_view::npos &&
           firstBytes.find("<bom") != std::string_view::npos;
}

GraphDraft readCycloneDX(Input& input) {
    const std::string_view firstBytes = input.peek();
    const std::size_t first = firstBytes.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
    const bool isXml = first != std::string_view::npos && firstBytes[first] == '<';
    return isXml ? XmlReader(input).read() : JsonReader(input).read();
}

}  // namespace depcompare
