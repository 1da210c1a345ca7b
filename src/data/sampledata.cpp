#include "data/sampledata.h"
