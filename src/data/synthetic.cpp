#include "data/synthetic.h"
