#!/usr/bin/env python3
"""Runs the recipes of docs/ci.md for a small repository; npx, gh and curl are stand-ins.
usage: ci.py DOCUMENT PROGRAM-FOLDER"""
import json
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

import yaml

document = Path(sys.argv[1]).read_text(encoding="utf-8")
MARK = "<!-- depcompare -->\n"
STAND_INS = {
    # The graph of src/, in which a file's lines name what it needs.
    "npx": r"""#!/bin/sh
echo . >>"$STATE/graphs"
[ "$3 $4" = "--json src" ] && [ ! -e src/broken.js ] || { echo "cannot parse src"; exit 1; }
cd src && jq -nR '[inputs | {(input_filename): [select(. != "")]}]
    | reduce .[] as $line ({}; .[$line | keys[0]] += ($line | .[keys[0]]))' *""",
    "gh": r"""#!/usr/bin/env python3
import json, os, pathlib, subprocess, sys
words = sys.argv[2:]
take = lambda name: words.pop(words.index(name) + 1) if name in words else None
jq, method, field = take("--jq"), take("--method"), take("--field")
[place] = [word for word in words if not word.startswith("--")]
file = pathlib.Path(os.environ["STATE"], "comments")
comments = json.loads(file.read_text())
body = field and pathlib.Path(field.removeprefix("body=@")).read_text()
me = os.environ.get("COMMENT_AUTHOR", "github-actions[bot]")
if method == "PATCH" and os.path.dirname(place) == "repos/our/repository/issues/comments":
    [comment] = [one for one in comments if str(one["id"]) == os.path.basename(place)]
    comment["body"] = body
elif not method and place == "repos/our/repository/issues/5/comments":
    if field:
        comments.append({"id": 90 + len(comments), "user": {"login": me}, "body": body})
    else:
        sys.exit(subprocess.run(["jq", "-r", jq], input=json.dumps(comments), text=True).returncode)
else:
    sys.exit(f"unexpected: {sys.argv}")
file.write_text(json.dumps(comments))""",
    "curl": r"""#!/usr/bin/env python3
import json, os, pathlib, sys
words = sys.argv[1:]
take = lambda name: words.pop(words.index(name) + 1) if name in words else None
assert take("--header") == "PRIVATE-TOKEN: secret"
method, data = take("--request"), take("--data-urlencode")
place = words[-1].removeprefix("https://gitlab.example/api/v4/projects/3/merge_requests/5/notes")
file = pathlib.Path(os.environ["STATE"], "comments")
comments = json.loads(file.read_text())
body = data and pathlib.Path(data.removeprefix("body@")).read_text()
if method == "PUT":
    [comment] = [one for one in comments if place == f"/{one['id']}"]
    comment["body"] = body
elif method == "POST" and place == "":
    comments.append({"id": 90 + len(comments), "body": body})
else:
    page = int(place.removeprefix("?sort=asc&per_page=100&page="))
    print(json.dumps(comments[page - 1:page]))  # pages of one comment
file.write_text(json.dumps(comments))""",
}


def block(language, title):
    """The first block of the language after the title."""
    return re.search(f"```{language}\n(.*?)\n```", document[document.index(title):], re.S)[1]


class Job:
    def __init__(self, folder, **environment):
        self.folder, self.state = folder / "work", folder
        self.environment = os.environ | {"STATE": str(folder), "HOME": str(folder)} | environment
        self.environment["PATH"] = f"{folder}/bin:{Path(sys.argv[2]).resolve()}:{os.environ['PATH']}"

    def sh(self, script, **more):
        return subprocess.run(["sh", "-ec", script], cwd=self.folder, env=self.environment | more,
                              check=False, capture_output=True, text=True)


def github(job, base, head):
    workflow = yaml.safe_load(block("yaml", "## GitHub Actions"))
    known = {"github.event.pull_request.base.sha": base, "github.event.pull_request.head.sha": head,
             "github.token": "secret", "github.event.number": "5"}
    output, summary = job.state / "output", job.state / "summary"
    output.write_text("")
    for step in workflow["jobs"]["compare"]["steps"]:
        if "run" in step:
            values = {name: re.sub(r"\$\{\{ (.*?) \}\}", lambda found: known[found[1]], value)
                      for name, value in step.get("env", {}).items()}
            result = job.sh(step["run"], GITHUB_REPOSITORY="our/repository", GITHUB_OUTPUT=str(output),
                            GITHUB_STEP_SUMMARY=str(summary), **values)
            if result.returncode:
                return result.returncode
            for line in output.read_text().splitlines():
                known["steps.compare.outputs." + line.split("=")[0]] = line.split("=")[1]
    return 0


def gitlab(job, base, head):
    steps = yaml.safe_load(block("yaml", "## GitLab"))["dependencies"]["script"]
    return job.sh("\n".join(steps), CI_MERGE_REQUEST_DIFF_BASE_SHA=base, CI_COMMIT_SHA=head,
                  DEPCOMPARE_TOKEN="secret", CI_API_V4_URL="https://gitlab.example/api/v4",
                  CI_PROJECT_ID="3", CI_MERGE_REQUEST_IID="5").returncode


def jenkins(job, base, head):
    groovy, status = block("groovy", "## Jenkins"), "unset"
    job.sh('git remote add origin .')
    for returns, script in re.findall(r"sh(\(returnStatus: true, script:)? '''(.*?)'''", groovy, re.S):
        result = job.sh(script, CHANGE_TARGET="main", CHANGE_ID="5", STATUS=status,
                        COMMENT_AUTHOR=re.search("COMMENT_AUTHOR = '(.*)'", groovy)[1])
        if returns:
            status = str(result.returncode)
        elif result.returncode:
            return result.returncode
    return 0


def check(service, expected_fail, **environment):
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        job = Job(folder, **environment)
        for place in ("bin", "work/ci", "work/src"):
            (folder / place).mkdir(parents=True)
        for tool, text in STAND_INS.items():
            (folder / "bin" / tool).write_text(text)
            (folder / "bin" / tool).chmod(0o755)
        theirs = {"id": 7, "user": {"login": "someone"}, "body": "Nice"}
        (folder / "comments").write_text(json.dumps([theirs]))

        def commit(**files):
            for stem, text in files.items():
                (folder / "work/src" / f"{stem}.js").write_text(text)
            done = job.sh("git add src && git -c user.name=a -c user.email=a@b commit -qm x "
                          "&& git rev-parse HEAD")
            return done.stdout.strip()

        def run(head, status, graphs, said):
            """One run: its exit status, the graphs that it made, and a part of its comment."""
            (folder / "graphs").write_text("")
            got = service(job, base, head)
            comments = json.loads((folder / "comments").read_text())
            made = len((folder / "graphs").read_text().split())
            assert (got, made) == (status, graphs), (service.__name__, environment, got, made)
            assert comments[0] == theirs and len(comments) == 2, comments
            assert comments[1]["body"].startswith(MARK) and said in comments[1]["body"], comments[1]
            assert "<html" in (folder / "work/report.html").read_text()[:200]

        for name, title in (("dependencies", "## The script"), ("comment", "save it as `ci/comment.sh`")):
            (folder / f"work/ci/{name}.sh").write_text(block("sh", title) + "\n")
        job.sh("git init -q -b main")
        base = commit(a="b.js\n", b="\n", c="\n")
        job.sh("git checkout -q -b change")
        head = commit(c="b.js\n")
        run(head, expected_fail["link"], 2, "c.js")
        run(head, expected_fail["link"], 0, "c.js")
        head = commit(b="a.js\n")
        run(head, expected_fail["cycle"], 1, "b.js")
        run(commit(broken=""), 2, 1, "b.js")  # no graph: an error, and the comment stays
        job.sh("git rm -rq src && git -c user.name=a -c user.email=a@b commit -qm x")
        head = job.sh("git rev-parse HEAD").stdout.strip()
        run(head, expected_fail["link"], 0, "a.js")
        assert job.sh("git worktree list").stdout.count("\n") == 1


for recipe in (github, gitlab, jenkins):
    check(recipe, {"link": 0, "cycle": 1})
check(gitlab, {"link": 1, "cycle": 1}, FAIL_ON="structural")
print("the recipes of three services hold")
