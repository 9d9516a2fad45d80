# The best model of each run of a ResultFile as a table: jq -rR -f best.jq all.jsonl
# A line that the program was killed in the middle of is passed over.
fromjson? | . as $run | .models[:1][] |
  [$run.run, $run.status, .id] + [.coefficients[] | "\(.name)=\(.value)"] | map(tostring) | join("\t")
