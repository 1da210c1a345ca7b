#include "data/recordset.h"
