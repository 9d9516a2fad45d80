#pragma once

#include <cstddef>
#include <vector>

#include "engine/SolveForm.h"

namespace quorvex {

class ModelClass;
class SeededRandom;
struct SolveData;

// What the model's formula says of one of its free coefficients. It is found by computing the model, at points and
// coefficients of the order of 1, so that no unit of the data can blur it.
struct CoefficientRole {
  bool Linear = false;  // enters linearly, together with all others that do

  // Of the others. The unit, as a product of powers of the units of X and Y: exp(-b*x) has b in 1/x. Known where the
  // formula has no constants with units of their own.
  bool UnitKnown = false;
  std::vector<double> XPower;  // one per independent variable
  double YPower = 0;

  // A place along an independent variable, such as that of a peak: sign * value moves with X. -1: none.
  int PlaceOf = -1;
  double PlaceSign = 1;

  // Follows a shift t of X by (shift * t * value of coefficient FollowsWith), such as b in 1 + exp(b - c*x); or, where
  // Grows, is multiplied by exp of that, such as b in exp(-b*exp(-c*x)). -1: doesn't.
  int FollowsWith = -1;
  double Shift = 0;
  bool Grows = false;
};

// One role per free coefficient.
//
// Linear: f is halfway where the coefficients are halfway, at several places (a greedy set, in the order of the
// coefficients). Units: a change of the unit of X or Y that the coefficients undo leaves f as it is, so that
// x df/dx + sum of power * a df/da is a combination of the derivatives by the linear coefficients; the powers are
// solved for by least squares and believed where they are the same at several places and leave nothing. Places: the
// same with a shift of X.
std::vector<CoefficientRole> FindRoles(ModelClass& model, const SolveData& data, SeededRandom& random, SolveForm& form);

}  // namespace quorvex
