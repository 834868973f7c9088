#pragma once

// With blocks enabled, GNUstep's headers include this header of another Objective-C runtime.
#include <Block.h>
