// Samples at any address: the frame's loadSample and storeSample.
#pragma once

#include "frame/samples.h"
