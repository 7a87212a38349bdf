#pragma once

// GNUstep's Foundation asks for the blocks runtime under this name.
#include <Block.h>
