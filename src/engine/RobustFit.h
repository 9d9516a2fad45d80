#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/Settings.h"
#include "core/SolveData.h"
#include "engine/SolveForm.h"

namespace quorvex {

class ModelClass;

// Solves a model so that points far off it count less: the coefficients minimise
//
//   sum of rho(r_i / s),   r_i = root(w_i) (y_i - f(x_i; a))
//
// w_i being the data's own weights, of mean 1, s the scale and rho the loss of Settings::Loss (RobustLoss.h).
// ModelClass::Fit goes this way where that is none of squares.
//
// Method: a fit by least squares, as without a loss; then rounds, each a fit by the same solver from the present
// coefficients with the weights w_i psi(u_i)/u_i, u_i = r_i/s, until the fitted values settle to 1e-10 of s or the
// rounding of the model's values (iteratively reweighted least squares, Holland & Welsch, 1977). A loss that redescends
// starts from the answer of Huber's with three tenths of the scale, nearly that of least absolute values, which has one
// minimum where the model is linear and stands a third of bad points to one side. From a sweep over starts, and
// from what TryHarder finds, the best by least squares is gone on from.
//
// A search takes no step whose gain is below the rounding of its merit function, so that where rounds converge slowly
// the coefficients of a nonlinear fit are right to 1e-6 of their standard errors; those of the linear solver to 1e-9.
// With Huber's or the soft L1 loss a point that is 1e13 scales off keeps a search from seeing the others at all.
//
// The scale is the standard deviation of the good points' r, without standard deviations of the data in the unit of Y:
// Settings::LossScale where that is above 0; else the median of |r_i| / 0.6745, found anew at each round. That median
// is not moved by bad points as long as they are fewer than half; it is what R's MASS::rlm does, too. It never counts
// for less than 1e-13 of the middle size of y, so that an exact fit through more than half of the points is one.
//
// What it leaves in the model, `Loss` and `LossScale` besides: RSS, RssNorm, R2, the residuals and all that follows
// from them are of all points with the data's weights, as by least squares, outliers included. `Variances` is the
// diagonal of (J^T W J)^-1 with the data's weights, too, and StdErr what makes standard errors of it,
//
//   StdErr = K s root( sum of psi(u_i)^2 / (n - p) ) / m,   K = 1 + (p/n) var(psi'(u)) / m^2,   m the mean of psi'(u_i)
//
// (P. J. Huber, Robust Statistics, 1981, section 7.6), n being the points and p the free coefficients.
//
// An abort ends it with an unsolved model; a pause takes the coefficients so far. Without a solution `Failure` and the
// log say why: as by least squares; a round that fails; fewer points with a weight than coefficients; a mean slope m
// that is not above 0, which a scale given far too small leads to. The log has a few lines about the rounds, and the
// outliers.
bool FitRobustly(ModelClass& model, const SolveData& data, const Settings& settings, std::string& log, SolveForm& form);

// The settings to fit a solved model to other points as it was fitted to its own: with its loss, and the scale that was
// given, if one was. Whoever refits takes these, since the settings at hand may be those of no run.
Settings SettingsOfRefit(const ModelClass& model, Settings settings);

// What the loss of the model's fit leaves the points of their weights, from 1 down to 0, in the order of the data, by
// the present coefficients; 1 by least squares. Nothing where the model has no value at some point.
std::optional<std::vector<double>> RobustWeights(ModelClass& model, const SolveData& data);

// The rows, from 1 as the user counts them (SolveData::Row) and ascending, of the points with less than half their
// weight. None by least squares.
std::vector<std::size_t> OutlierRows(ModelClass& model, const SolveData& data);

// "Outliers: rows 3, 17", of many the first 20; "Outliers: none".
std::string OutlierText(const std::vector<std::size_t>& rows);

}  // namespace quorvex
