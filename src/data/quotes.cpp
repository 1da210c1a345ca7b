#include "data/quotes.h"
