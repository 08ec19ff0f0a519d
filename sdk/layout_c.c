#include "sdk/layout.h"
