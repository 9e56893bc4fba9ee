// The library keeps its state in globals, which are set for one file and reset after it.
#include "formats/dot/dot_graph.h"

#include <charconv>
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
    std::string messages;
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
    explicit Session(const Limits& limits) : former_(agseterrf(noteMessage)) {
        watch = {.messages = {}, .edges = 0, .mostEdges = limits.edges, .forgotten = {}};
        agreseterrors();
        agsetfile(nullptr);
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() { agseterrf(former_); }

  private:
    agusererrf former_;
};

/// Throws: `InputError` with the first message and the line that it names.
void requireSilence(const Input& input) {
    if (watch.edges > watch.mostEdges) {
        throw InputError(input.name(), 0, tooManyEdges(watch.mostEdges));
    }
    std::string_view message = watch.messages;
    if (message.empty()) {
        return;
    }
    message = message.substr(0, message.find('\n'));
    for (const std::string_view prefix : {"Error", "Warning", ":", " ", ":", " "}) {
        message.remove_prefix(message.starts_with(prefix) ? prefix.size() : 0);
    }
    constexpr std::string_view place = " in line ";
    std::size_t line = 0;
    std::string problem(message);
    if (const std::size_t found = message.find(place); found != std::string_view::npos) {
        std::string_view number = message.substr(found + place.size());
        const auto end = std::from_chars(number.data(), number.data() + number.size(), line);
        number.remove_prefix(static_cast<std::size_t>(end.ptr - number.data()));
        problem = std::string(message.substr(0, found)).append(number);
    }
    throw InputError(input.name(), line, "not well-formed DOT: " + problem);
}

}  // namespace

DotGraph::DotGraph(Input& input) : lock_(libraryMutex()) {
    const Session session(input.limits());
    DotBytes bytes(input);
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
