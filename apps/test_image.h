// The demo's built-in test picture, made procedurally so that the demo needs no input.
#ifndef PXKCC_APPS_TEST_IMAGE_H
#define PXKCC_APPS_TEST_IMAGE_H

#include "image_view.h"

namespace demo {

// A packed R,G,B picture (3 bytes per pixel), from top to bottom:
//   colour bars at 100% and at 75%;
//   horizontal ramps 0..255 of grey, red, green and blue;
//   vertical ramps (grey, then a full-saturation hue sweep) on the left, and a
//   synthetic sunset over mountains and water, built from smooth value noise, on
//   the right.
// Any size works; odd sizes are fine.
Buffer makeTestImage(int width, int height);

// A packed R,G,B,A copy of `rgb` whose alpha byte holds a diagonal stripe pattern.
Buffer withAlpha(const Buffer& rgb);

// A planar copy (R, G and B planes) of a packed image.
Buffer toPlanar(const Buffer& packed);

}  // namespace demo

#endif
