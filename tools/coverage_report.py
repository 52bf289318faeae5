#!/usr/bin/python3
"""coverage_report.py LIMIT  Reads what `llvm-cov export` says and prints which outcomes of which conditions no test had, and the share of those
that were had. Comparisons that the compiler wrote (`= default`) do not count. Exits with 1 when the share is below LIMIT (percent).
"""

import json
import os
import sys
from collections import defaultdict
from pathlib import Path

had = defaultdict(lambda: [0, 0])  # a condition: how often it was true, and false, in all instances of its template
for function in json.load(sys.stdin)["data"][0]["functions"]:
    for line, column, _, _, true, false, file, *_ in function.get("branches", []):
        path = os.path.relpath(function["filenames"][file])
        if path.startswith(("..", "build", "tests")):
            continue
        counts = had[path, line, column]
        counts[0] += true
        counts[1] += false

sources = {path: Path(path).read_text().splitlines() for path, _, _ in had}
outcomes = missed = 0
for (path, line, column), counts in sorted(had.items()):
    if "= default" in sources[path][line - 1]:
        continue
    outcomes += 2
    for times, outcome in zip(counts, ("true", "false")):
        if times == 0:
            missed += 1
            print(f"{path}:{line}:{column}: never {outcome}: {sources[path][line - 1].strip()}")
share = 100 * (1 - missed / outcomes)
print(f"{outcomes - missed} of {outcomes} outcomes had: {share:.1f} %")
sys.exit(share < float(sys.argv[1]))
