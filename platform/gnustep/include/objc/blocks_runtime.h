#pragma once

// With blocks on, GNUstep's headers ask for this header of another Objective-C runtime.
#include <Block.h>
