#include "../high/high.h"
