/** Where the middleware keeps its readiness files and its input socket. */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/**
 * The folder, without a slash at its end: /mnt/vendor/tmp on a device; on Linux $QORTV_VENDOR_TMP
 * where that is set. The text lives as long as the process. Any thread.
 */
const char* qortv_vendor_tmp(void);

#ifdef __cplusplus
}
#endif
