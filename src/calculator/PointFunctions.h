#pragma once

namespace quorvex {

// What an angle is measured in.
enum class AngleUnit { Radians, Degrees };

// A function that takes a curve point by point, or a number. It and its inverse return what is finite or throw
// CalculatorFault: invalid outside the domain, division by zero at a pole, overflow.
struct PointFunction {
  int Index;           // among the operations
  const char* Legend;  // before what it is applied to; a bracket closes behind
  double (*Value)(double y);
  const char* ArcLegend = nullptr;  // of the inverse; null where Arc changes nothing
  double (*Arc)(double y) = nullptr;
  bool OfAngle = false;  // of an angle, which the inverse gives
};

// The function of that index; null where the operation is none.
const PointFunction* FindPointFunction(int Index);

// The function, or its inverse, at y, with angles in that unit.
double ValueOf(const PointFunction& function, bool arc, AngleUnit unit, double y);

// a to the power b, as above.
double RaisedTo(double a, double b);

}  // namespace quorvex
