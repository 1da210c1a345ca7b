#include "data/schema.h"
