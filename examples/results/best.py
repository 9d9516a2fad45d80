# The best model of each run of a ResultFile as a table: python3 best.py all.jsonl
import json
import sys

for line in open(sys.argv[1], encoding="utf-8"):
    if not line.endswith("\n"):
        break  # the program was killed in the middle of this line
    run = json.loads(line)
    for model in run["models"][:1]:
        values = [f"{c['name']}={c['value']!r}" for c in model["coefficients"]]
        print(run["run"], run["status"], model["id"], *values, sep="\t")
