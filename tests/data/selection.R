# Writes the reference tables of variable selection: Rscript selection.R in this folder (R 4.2.2).
# Every number comes from lm(), one model at a time; the files are not needed by any build or test.

options(digits = 15)
num <- function(x) paste(sprintf("%.15g", x), collapse = " ")
tab <- function(...) paste(..., sep = "\t")

write.table(format(mtcars[, c(2:11, 1)], trim = TRUE, drop0trailing = TRUE), "mtcars.txt", sep = "\t", quote = FALSE,
            row.names = FALSE)
set.seed(20)
twelve <- round(as.data.frame(matrix(rnorm(40 * 12), 40, dimnames = list(NULL, paste0("c", 1:12)))), 3)
twelve$y <- round(5 + 2 * twelve$c3 - 1.5 * twelve$c7 + 0.8 * twelve$c8 + 0.9 * twelve$c12 + rnorm(40), 3)
write.table(twelve, "twelve_columns.txt", sep = "\t", quote = FALSE, row.names = FALSE)

read <- function(file) {
  d <- if (grepl("csv$", file)) read.csv(file) else read.delim(file)
  d[complete.cases(d), ]
}
k.of <- function(d, weighted) ncol(d) - 1 - weighted
fit <- function(d, vars, intercept, weighted) {
  k <- k.of(d, weighted)
  w <- if (weighted) 1 / d[[k + 2]]^2 else rep(1, nrow(d))
  x <- as.matrix(d[, vars, drop = FALSE])
  m <- if (intercept) lm(d[[k + 1]] ~ x, weights = w / mean(w)) else lm(d[[k + 1]] ~ x - 1, weights = w / mean(w))
  list(model = m, s = summary(m), rss = deviance(m))
}

cat("# Linear models by R's lm: file, columns of X (from 1), intercept, weighted by the last column,\n",
    "# RSS R2 StdErr F Prob(F) Cp, coefficients (the intercept first), standard errors, Prob(t). Made by selection.R.\n",
    sep = "", file = "subset_fits.txt")
for (case in list(list("longley.csv", 1:6, 1, 0), list("longley.csv", c(2, 3, 4, 6), 1, 0),
                  list("longley.csv", 1:6, 0, 0), list("stackloss.txt", 1:3, 1, 0), list("stackloss.txt", 2, 0, 0),
                  list("airquality.csv", c(1, 3), 1, 0), list("mtcars.txt", c(5, 6, 8), 1, 0),
                  list("mtcars.txt", 1:10, 0, 0), list("plant_uptake_sd.txt", 1:2, 1, 1),
                  list("plant_uptake_sd.txt", 1, 0, 1), list("twelve_columns.txt", 1:12, 1, 0))) {
  d <- read(case[[1]])
  f <- fit(d, case[[2]], case[[3]], case[[4]])
  full <- fit(d, seq_len(k.of(d, case[[4]])), case[[3]], case[[4]])
  F <- f$s$fstatistic
  cp <- f$rss / (full$rss / df.residual(full$model)) + 2 * length(coef(f$model)) - nrow(d)
  cat(tab(case[[1]], paste(case[[2]], collapse = " "), case[[3]], case[[4]],
          num(c(f$rss, f$s$r.squared, f$s$sigma, F[1], pf(F[1], F[2], F[3], lower.tail = FALSE), cp)),
          num(coef(f$model)), num(f$s$coefficients[, 2]), num(f$s$coefficients[, 4])), "\n", sep = "",
      file = "subset_fits.txt", append = TRUE)
}

# What a procedure does step by step, as in "+3 +7 -3"; p of each variable from the table of coefficients.
p.of <- function(d, vars, intercept) {
  p <- fit(d, vars, intercept, 0)$s$coefficients[, 4]
  if (intercept) p[-1] else p
}
path <- function(d, procedure, enter, remove, intercept) {
  k <- ncol(d) - 1
  vars <- if (procedure == "Backward") 1:k else integer(0)
  steps <- if (procedure == "Backward") "all" else character(0)
  repeat {
    done <- TRUE
    if (procedure != "Backward" && length(vars) < k) {
      left <- setdiff(1:k, vars)
      p <- sapply(left, function(j) tail(p.of(d, c(vars, j), intercept), 1))
      best <- tail(which(p == min(p)), 1)
      if (p[best] <= enter) {
        vars <- c(vars, left[best])
        steps <- c(steps, paste0("+", left[best]))
        done <- FALSE
      }
    }
    if (procedure != "Forward" && length(vars) > 0) {
      p <- p.of(d, vars, intercept)
      worst <- which.max(p)
      if (p[worst] > remove) {
        steps <- c(steps, paste0("-", vars[worst]))
        vars <- vars[-worst]
        done <- FALSE
      }
    }
    if (done) return(paste(steps, collapse = " "))
  }
}
cat("# Paths of procedures: file, procedure, p to enter, p to remove, intercept, steps. Made by selection.R.\n",
    file = "selection_paths.txt")
for (file in c("longley.csv", "mtcars.txt", "stackloss.txt", "twelve_columns.txt"))
  for (intercept in c(1, 0))
    for (procedure in c("Forward", "Backward", "Stepwise"))
      for (p in list(c(0.05, 0.1), c(0.15, 0.2), c(0.5, 0.6)))
        cat(tab(file, procedure, p[1], p[2], intercept, path(read(file), procedure, p[1], p[2], intercept)), "\n",
            sep = "", file = "selection_paths.txt", append = TRUE)

cat("# The best models of All Subsets: file, most variables, rank, then of each its columns and RSS. By R's lm of all\n",
    "# combinations. Made by selection.R.\n", sep = "", file = "best_subsets.txt")
for (case in list(list("twelve_columns.txt", 12, "StdErr"), list("twelve_columns.txt", 3, "R2"),
                  list("mtcars.txt", 10, "StdErr"), list("longley.csv", 6, "RSS"))) {
  d <- read(case[[1]])
  k <- ncol(d) - 1
  sets <- lapply(1:(2^k - 1), function(i) which(bitwAnd(i, 2^(0:(k - 1))) > 0))
  sets <- sets[lengths(sets) <= case[[2]]]
  rss <- sapply(sets, function(v) deviance(fit(d, v, 1, 0)$model))
  key <- if (case[[3]] == "StdErr") rss / (nrow(d) - 1 - lengths(sets)) else rss
  best <- order(key)[1:12]
  cat(tab(case[[1]], case[[2]], case[[3]],
          paste(sapply(best, function(i) paste(paste(sets[[i]], collapse = ","), num(rss[i]))), collapse = ";")), "\n",
      sep = "", file = "best_subsets.txt", append = TRUE)
}

cat("# R^2 of each column's regression on the others: file, intercept, values. By R's lm. Made by selection.R.\n",
    file = "r2_on_others.txt")
for (file in c("longley.csv", "mtcars.txt", "stackloss.txt"))
  for (intercept in c(1, 0)) {
    d <- read(file)
    k <- ncol(d) - 1
    r2 <- sapply(1:k, function(j) {
      x <- as.matrix(d[, setdiff(1:k, j)])
      summary(if (intercept) lm(d[[j]] ~ x) else lm(d[[j]] ~ x - 1))$r.squared
    })
    cat(tab(file, intercept, num(r2)), "\n", sep = "", file = "r2_on_others.txt", append = TRUE)
  }
