#pragma once
// What --help says to somebody who sees the program for the first time: one screen. All options are
// listed by --help-all.
#include <string_view>

namespace depcompare {

inline constexpr std::string_view helpText =
    R"(Usage: depcompare [OPTION]... LEFT RIGHT

Compares two dependency graphs, an old and a new state of a project, and shows
what changed. Reads GraphML, DOT, CycloneDX, dependency-cruiser's JSON and JGF.

  depcompare old.graphml new.graphml                   look at it here
  depcompare -f html -o page.html old.dot new.dot      or in a browser
  depcompare -q old.json new.json || echo changed      or let a script decide

  -f, --format FORMAT        text, json, html, markdown or summary
  -o, --output FILE          write there, not to standard output
      --report FORMAT=FILE   write this form too; may be repeated
  -q, --quiet                write nothing, answer by exit status
      --color WHEN           auto, always, never
      --no-pager             on a terminal: all at once
      --no-filter            show properties too, and all that is unchanged
      --filter NAME          show less: nonstructural (the default), unchanged
      --fail-on WHICH        what makes the status 1: any, structural, none
      --input-format FORMAT  how to read the graphs, if content does not tell
      --list-formats         what can be read, and what it becomes
      --node-id KEY          what tells nodes apart: id, name, or a property
      --file-type TYPE       nodes of this type are files too; may be repeated
      --convert jgf          write LEFT, the only graph, in another format
      --git, --textconv      for git diff; see docs/git.md
      --help-all, --version  all options, with limits on inputs; the version

Exit status: 0 no visible difference, 1 some, 2 trouble. More: man depcompare
)";

}  // namespace depcompare
