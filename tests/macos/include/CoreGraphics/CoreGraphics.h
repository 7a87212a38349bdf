#pragma once

// Stands for <CoreGraphics/CoreGraphics.h>.
#include <CoreGraphics/CGEvent.h>
#include <CoreGraphics/CGEventTypes.h>
