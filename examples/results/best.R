# The best model of each run of a ResultFile as a table (package jsonlite): Rscript best.R all.jsonl
library(jsonlite)
for (line in readLines(commandArgs(TRUE)[1], encoding = "UTF-8", warn = FALSE)) {
  if (!validate(line)) next  # the program was killed in the middle of this line
  run <- fromJSON(line, simplifyVector = FALSE)
  for (model in head(run$models, 1)) {
    values <- vapply(model$coefficients, function(c) sprintf("%s=%.17g", c$name, c$value), "")
    cat(run$run, run$status, model$id, values, sep = "\t", fill = FALSE)
    cat("\n")
  }
}
