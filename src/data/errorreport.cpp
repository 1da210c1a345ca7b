#include "data/errorreport.h"
