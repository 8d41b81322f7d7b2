// The scalar power routines: one float or one double raised to a power. Internal,
// not exported. They do not touch the processor's control state, so their last bit
// follows the caller's rounding mode.
#pragma once

namespace pxk {

// x^y for doubles, good to the last bit of a double: the platform's pow (correctly
// rounded in the default rounding mode on the libraries this builds against, within
// a unit in the last place otherwise). The cube roots of the Lab conversions call it
// with y = 0.3333333333333333 and narrow the result to float.
double pxkScalarPow(double x, double y);

// x^y for floats. A positive, normal, finite x with a finite y goes through a
// logarithm and an exponential worked in double from the float's exponent and a
// table row chosen by its leading seven mantissa bits (rounded to an even index),
// and the result is narrowed to float at the end; every other x or y follows the usual
// rules of a power function (a negative x with a non-integer y gives NaN, with an odd
// integer y a negative result; zero, infinite and NaN elements as pow does).
float pxkScalarPowf(float x, float y);

}  // namespace pxk
