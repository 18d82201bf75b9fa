#include "vendor_tmp.h"

const char* qortv_vendor_tmp(void) { return "/mnt/vendor/tmp"; }
