# Holds each line of a result file against docs/result-schema.json: check_results.py SCHEMA FILE
import json
import sys

import jsonschema

with open(sys.argv[1], encoding="utf-8") as file:
    schema = json.load(file)
jsonschema.Draft7Validator.check_schema(schema)
validator = jsonschema.Draft7Validator(schema)
with open(sys.argv[2], encoding="utf-8", newline="\n") as file:
    lines = file.read().split("\n")
if lines.pop() != "":
    sys.exit("The last line has no end.")


def refuse(text):
    sys.exit(f"{text} is no number of JSON.")


def once(pairs):
    names = [name for name, _ in pairs]
    if len(names) != len(set(names)):
        sys.exit(f"A name occurs twice: {names}")
    return dict(pairs)


for number, line in enumerate(lines, 1):
    run = json.loads(line, parse_constant=refuse, object_pairs_hook=once)
    for error in validator.iter_errors(run):
        sys.exit(f"Line {number}: {error.message} at {list(error.absolute_path)}")
print(len(lines))
