#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "draft/edit_ids.h"
#include "formats/formats.h"
#include "formats/json_records.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

using nlohmann::json;

bool saysNothing(const std::string& text) {
    return text.empty() || text == "NOASSERTION" || text == "NONE";
}

/// What a relationship says of the direction: "a DEPENDENCY_OF b" means that b needs a.
struct Direction {
    std::string type;
    bool isTurned = false;
};

Direction directionOf(std::string type) {
    constexpr std::pair<std::string_view, std::string_view> turned[] = {
        {"DEPENDENCY_OF", "DEPENDS_ON"}, {"CONTAINED_BY", "CONTAINS"},
        {"DESCRIBED_BY", "DESCRIBES"},   {"PREREQUISITE_FOR", "HAS_PREREQUISITE"},
        {"GENERATES", "GENERATED_FROM"},
    };
    for (const auto& [name, opposite] : turned) {
        if (type == name) {
            return {.type = std::string(opposite), .isTurned = true};
        }
    }
    constexpr std::string_view parts[] = {"_DEPENDENCY_OF", "_TOOL_OF", "DATA_FILE_OF",
                                          "OPTIONAL_COMPONENT_OF", "PACKAGE_OF"};
    if (std::ranges::any_of(parts, [&](std::string_view end) { return type.ends_with(end); })) {
        type.resize(type.size() - std::string_view("_OF").size());
        return {.type = std::move(type), .isTurned = true};
    }
    return {.type = std::move(type)};
}

class SpdxReader final : public JsonGraphReader {
  public:
    explicit SpdxReader(Input& input) : JsonGraphReader(input) {
        sink_.foldEqualEdges();  // some relationships have a shorter form beside the long one
        for (const char* key : {"documentNamespace", "created", "tools"}) {
            sink_.declareBuildProperty(key);
        }
    }

    GraphDraft read() {
        JsonFormat format{.records = {},
                          .required = {"spdxVersion", "sbom"},
                          .excludesOthers = true,
                          .known = {"annotations", "comment", "externalDocumentRefs",
                                    "hasExtractedLicensingInfos", "revieweds", "snippets"}};
        format.records.push_back(valuesAt({"documentDescribes", "*"}));
        format.records.push_back(valuesAt({"sbom", "documentDescribes", "*"}));
        for (const char* member : {"spdxVersion", "SPDXID", "name", "dataLicense",
                                   "documentNamespace", "creationInfo"}) {
            format.records.push_back(valuesAt({member}));
            format.records.push_back(valuesAt({"sbom", member}));  // GitHub wraps the document
        }
        for (const char* list : {"packages", "files", "relationships"}) {
            format.records.push_back(objectsAt({list, "*"}));
            format.records.push_back(objectsAt({"sbom", list, "*"}));
        }
        parse(format);
        if (version_.empty()) {
            bytes_.fail("the document has no member \"spdxVersion\"");
        }
        if (!version_.starts_with("SPDX-2.")) {
            bytes_.fail(
                fmt::format("{} is not SPDX 2; only SPDX 2 in JSON is read", inQuotes(version_)));
        }
        for (const std::string& described : described_) {
            addEdge(document_, described, "DESCRIBES");
        }
        return sink_.finish();
    }

    void take(const JsonPath& path, const json& value) override {
        const std::string& member = path[isWrapped(path) ? 1 : 0].key;
        if (member == "packages" || member == "files") {
            addElement(value, member == "packages" ? "name" : "fileName");
        } else if (member == "relationships") {
            addRelationship(value);
        } else if (member == "documentDescribes") {
            described_.push_back(textOf(value));
        } else if (member == "SPDXID") {
            document_ = textOf(value);
            sink_.setType(sink_.addNode(document_), "document");
        } else if (member == "creationInfo") {
            addCreation(value);
        } else {
            version_ = member == "spdxVersion" ? textOf(value) : version_;
            sink_.setGraphProperty(member, textOf(value));
        }
    }

  private:
    static bool isOneOf(std::string_view key, std::initializer_list<std::string_view> keys) {
        return std::ranges::find(keys, key) != keys.end();
    }
    static bool isWrapped(const JsonPath& path) {
        return path.depth() != 0 && path[0].key == "sbom";
    }

    // Tools are named with their versions; people and organizations stay.
    void addCreation(const json& creation) {
        if (const std::string time = memberText(creation, "created"); !time.empty()) {
            sink_.setGraphProperty("created", time);
        }
        std::map<std::string_view, std::set<std::string>> creators;
        for (const json& creator : elementsOf(creation, "creators", sink_)) {
            std::string text = textOf(creator);
            creators[text.starts_with("Tool:") ? "tools" : "creators"].insert(std::move(text));
        }
        for (const auto& [key, texts] : creators) {
            sink_.setGraphProperty(key, fmt::format("{}", fmt::join(texts, ", ")));
        }
    }

    void addElement(const json& element, const char* nameKey) {
        const std::string id = memberText(element, "SPDXID");
        if (id.empty()) {
            bytes_.fail("package or file without \"SPDXID\"");
        }
        const NodeNumber node = sink_.addNode(id);
        const std::string name = memberText(element, nameKey);
        const std::string version = memberText(element, "versionInfo");
        if (!name.empty()) {
            sink_.setName(node, name);
        }
        addReferences(node, elementsOf(element, "externalRefs", sink_));
        if (!name.empty()) {
            sink_.addIdCandidate(node, name);
            sink_.addIdCandidate(node, fmt::format("{}@{}", name, version));
        }
        addNamed(node, elementsOf(element, "checksums", sink_), "algorithm", "checksumValue");
        for (const json& file : elementsOf(element, "hasFiles", sink_)) {
            addEdge(id, textOf(file), "CONTAINS");
        }
        for (const auto& [key, value] : element.items()) {
            const std::string text = textOf(value);
            if (key != nameKey && !saysNothing(text) &&
                !isOneOf(key, {"SPDXID", "externalRefs", "checksums", "annotations", "hasFiles"})) {
                sink_.setProperty(node, key == "versionInfo" ? "version" : key, text);
            }
        }
    }

    void addReferences(NodeNumber node, const json& references) {
        // A package may have several; one alone says what it is.
        std::set<std::string> urls;
        for (const json& reference : references) {
            if (memberText(reference, "referenceType") == "purl") {
                urls.insert(memberText(reference, "referenceLocator"));
            }
        }
        if (urls.size() == 1) {
            sink_.addIdCandidate(node, barePackageURL(*urls.begin()));
            sink_.addIdCandidate(node, *urls.begin());
        }
        addNamed(node, references, "referenceType", "referenceLocator");
    }

    void addNamed(NodeNumber node, const json& list, const char* nameKey, const char* valueKey) {
        std::map<std::string, std::set<std::string>> values;  // their order says nothing
        for (const json& item : list) {
            values[memberText(item, nameKey)].insert(memberText(item, valueKey));
        }
        for (const auto& [name, named] : values) {
            sink_.setProperty(node, name, fmt::format("{}", fmt::join(named, ", ")));
        }
    }

    void addRelationship(const json& relationship) {
        std::string upstream = memberText(relationship, "spdxElementId");
        std::string downstream = memberText(relationship, "relatedSpdxElement");
        if (upstream.empty() || downstream.empty()) {
            bytes_.fail("relationship without \"spdxElementId\" or \"relatedSpdxElement\"");
        }
        if (saysNothing(upstream) || saysNothing(downstream)) {
            return;
        }
        const auto [type, isTurned] = directionOf(memberText(relationship, "relationshipType"));
        if (isTurned) {
            std::swap(upstream, downstream);
        }
        addEdge(upstream, downstream, type);
    }

    void addEdge(const std::string& upstream, const std::string& downstream,
                 const std::string& type) {
        sink_.set(sink_.addEdge(upstream, downstream), EdgeColumn::type, type);
    }

    std::string version_;
    std::string document_ = "SPDXRef-DOCUMENT";
    std::vector<std::string> described_;
};

}  // namespace

bool looksLikeSPDX(const JsonShape& shape) {
    return shape.has({"spdxVersion"}) || shape.has({"sbom", "spdxVersion"}) ||
           shape.has({"sbom", "SPDXID"});
}

GraphDraft readSPDX(Input& input) {
    return SpdxReader(input).read();
}

}  // namespace depcompare
