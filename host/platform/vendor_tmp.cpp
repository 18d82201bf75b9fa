#include "vendor_tmp.h"

#include <cstdlib>

const char* qortv_vendor_tmp() {
    const char* folder = std::getenv("QORTV_VENDOR_TMP");
    return folder != nullptr && *folder != '\0' ? folder : "/mnt/vendor/tmp";
}
