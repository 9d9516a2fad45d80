# Writes lowess.txt: R's robust locally weighted regression of three data sets, packages datasets and MASS, which are also
# files beside this one. Run it in the folder: Rscript lowess.R > lowess.txt
cat("# Smoothed values by R 4.2.2, which lowess.R has written: file, f, rounds after the first, delta, and one value a point\n")
cat("# in the order of X, which of old_faithful.csv is the second column.\n")
sets <- list(
  "cars.csv" = cars,
  "mcycle.txt" = MASS::mcycle,
  "old_faithful.csv" = faithful[, c("waiting", "eruptions")])
emit <- function(name, f, iter, delta) {
  d <- sets[[name]]
  d <- d[order(d[[1]]), ]
  s <- lowess(d[[1]], d[[2]], f = f, iter = iter, delta = delta)
  cat(name, "\t", sprintf("%.17g", f), "\t", iter, "\t", sprintf("%.17g", delta), "\t", paste(sprintf("%.17g", s$y), collapse = " "), "\n", sep = "")
}
for (f in c(0.1, 0.33, 2/3, 0.99)) emit("cars.csv", f, 2, 0)
emit("cars.csv", 0.5, 0, 0)
emit("cars.csv", 0.25, 3, 2.5)
emit("mcycle.txt", 0.1, 2, 0)
emit("mcycle.txt", 0.3, 2, 0)
emit("mcycle.txt", 0.3, 2, 1.104)
emit("mcycle.txt", 2/3, 2, 60)
emit("old_faithful.csv", 0.1, 2, 0)
emit("old_faithful.csv", 0.2, 2, 2)
