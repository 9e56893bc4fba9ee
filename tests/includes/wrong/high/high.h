#include "../low/low.h"
