# The figures of Agreement.IsThatOfR in agreement_test.cpp, by R: Rscript agreement.R (Debian: r-base-core, r-cran-psych)
suppressMessages(library(psych))
six <- matrix(c(9,2,5,8, 6,1,3,2, 8,4,6,8, 7,1,2,6, 10,5,6,9, 6,2,4,7), ncol = 4, byrow = TRUE)
f <- 0:14
value <- 70 + f * 1.25 + (f * 7) %% 5
made <- cbind(value, value + 0.5 + ((f * 37) %% 11 - 5) / 4, value - 0.25 + ((f * 53) %% 13 - 6) / 4,
              value + 0.75 + ((f * 29) %% 7 - 3) / 4)
row <- function(x) cat("{", paste(sprintf("%.12g", x), collapse = ", "), "},\n", sep = "")
for (readings in list(six, made)) {
    iccs <- suppressWarnings(ICC(readings, lmer = FALSE)$results)
    for (type in c("ICC2", "ICC3"))
        row(unlist(iccs[iccs$type == type, c("ICC", "lower bound", "upper bound")]))
    t <- t.test(readings[, 2], readings[, 1], paired = TRUE)
    row(c(t$estimate, t$conf.int, t$statistic, t$p.value, sd(readings[, 2] - readings[, 1])))
    # Columns 1 and 2 by one observer, 3 and 4 by another.
    long <- data.frame(value = c(readings), film = factor(rep(seq_len(nrow(readings)), 4)),
                       observer = factor(rep(1:2, each = 2 * nrow(readings))))
    squares <- anova(lm(value ~ film * observer, long))[["Mean Sq"]]  # film, observer, both, within
    between <- max(squares[3] - squares[4], 0) / 2 + max(squares[2] - squares[3], 0) / (2 * nrow(readings))
    row(sqrt(c(squares[4], between, squares[4] + between)))
}
