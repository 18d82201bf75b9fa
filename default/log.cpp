#include "log.h"

uint8_t mTvApiDebug = 1;
