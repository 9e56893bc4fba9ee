#pragma once
#include <dependency/graph/graph.h>
