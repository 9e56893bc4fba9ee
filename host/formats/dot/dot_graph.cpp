// The library keeps its state in globals, which are set for one file and reset after it.
#include "formats/dot/dot_graph.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "formats/dot/dot_bytes.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

struct Watch {
    const DotBytes* bytes = nullptr;
    std::string messages;
    std::size_t line = 0;  // of the first message
    std::size_t edges = 0;
    std::size_t mostEdges = 0;
    ForgottenNames forgotten;
};

// Guarded by the lock.
Watch watch;  // NOLINT(cert-err58-cpp): empty texts and numbers throw nothing.

std::mutex& libraryMutex() {
    static std::mutex mutex;
    return mutex;
}

int noteMessage(char* part) {
    if (watch.messages.empty()) {
        watch.line = watch.bytes->lineRead();
    }
    watch.messages += part;
    return 0;
}

// A few words can create any number of edges ({a b ...} -> {c d ...}), so they are counted while they
// are created. Refusing an ID refuses the edge.
template <class Result, class... Rest>
Result limitedMap(void* state, int kind, char* text, IDTYPE* id, Rest... rest) {
    if (kind == AGEDGE && ++watch.edges > watch.mostEdges) {
        return 0;
    }
    return AgIdDisc.map(state, kind, text, id, rest...);
}

// When it has created the object, the library still knows every name.
void noteName(void* /*state*/, int kind, void* object) {
    if (kind == AGNODE) {
        if (const std::string_view name = agnameof(object); name.starts_with('%')) {
            watch.forgotten.emplace(object, name);
        }
    }
}

int readPiece(void* bytes, char* target, int size) {
    return static_cast<DotBytes*>(bytes)->read(target, size);
}

/// How the library makes IDs and reads; every graph points here as long as it lives.
Agdisc_t& disciplines() {
    static Agiddisc_t ids = [] {
        Agiddisc_t limited = AgIdDisc;
        limited.map = limitedMap;
        limited.idregister = noteName;
        return limited;
    }();
    static Agiodisc_t files = [] {
        Agiodisc_t pieces = AgIoDisc;
        pieces.afread = readPiece;
        return pieces;
    }();
    static Agdisc_t all{.mem = &AgMemDisc, .id = &ids, .io = &files};
    return all;
}

class Session {
  public:
    Session(const DotBytes& bytes, const Limits& limits) : former_(agseterrf(noteMessage)) {
        watch = {.bytes = &bytes,
                 .messages = {},
                 .line = 0,
                 .edges = 0,
                 .mostEdges = limits.edges,
                 .forgotten = {}};
        agreseterrors();
        agsetfile(nullptr);
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() { agseterrf(former_); }

  private:
    agusererrf former_;
};

/// Returns: the message without the file and line in it, which the input itself may have stated
///          (`# 7 "name"`).
std::string problemIn(std::string_view message) {
    message = message.substr(0, message.find('\n'));
    for (const std::string_view before : {"Error: ", "Warning: "}) {
        message.remove_prefix(message.starts_with(before) ? before.size() : 0);
    }
    if (const std::size_t begin = message.rfind("syntax "); begin != std::string_view::npos) {
        message.remove_prefix(begin);
    }
    constexpr std::string_view place = " in line ";
    const std::size_t begin = message.find(place);
    if (begin == std::string_view::npos) {
        return std::string(message);
    }
    std::string_view rest = message.substr(begin + place.size());
    rest.remove_prefix(std::min(rest.find(' '), rest.size()));
    if (rest.starts_with(" of ")) {
        rest.remove_prefix(std::min(rest.rfind(" splits "), rest.size()));
    }
    return std::string(message.substr(0, begin)).append(rest);
}

/// Throws: `InputError` with the first message and its line.
void requireSilence(const Input& input) {
    if (watch.edges > watch.mostEdges) {
        throw InputError(input.name(), 0, tooManyEdges(watch.mostEdges));
    }
    if (!watch.messages.empty()) {
        throw InputError(input.name(), watch.line,
                         "not well-formed DOT: " + problemIn(watch.messages));
    }
}

}  // namespace

DotGraph::DotGraph(Input& input) : lock_(libraryMutex()) {
    DotBytes bytes(input);
    const Session session(bytes, input.limits());
    graph_.reset(agread(&bytes, &disciplines()));
    forgotten_ = std::move(watch.forgotten);
    // The library keeps what follows the graph until it has seen the end.
    bool several = false;
    while (Agraph_t* further = agread(&bytes, &disciplines())) {
        several = true;
        agclose(further);
    }
    bytes.rethrowFailure();
    requireSilence(input);
    if (several || !graph_) {
        throw InputError(input.name(), 0,
                         several ? "more than one graph in the file" : "no graph in the file");
    }
}

std::string_view DotGraph::nameOf(Agnode_t* node) const {
    const auto forgotten = forgotten_.find(node);
    return forgotten == forgotten_.end() ? std::string_view(agnameof(node)) : forgotten->second;
}

}  // namespace depcompare
