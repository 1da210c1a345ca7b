#include "data/database.h"
