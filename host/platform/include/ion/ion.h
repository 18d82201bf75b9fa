/**
 * The platform's buffer allocator. On Linux a buffer is a memfd: importing it only checks the
 * descriptor, so there is nothing that a crash could leak.
 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/** A handle of an imported buffer, valid for the device descriptor that imported it. */
typedef int ion_user_handle_t;

/** Opens the allocator. Returns a descriptor to close with `ion_close`, or -1 with errno set. */
int ion_open(void);
/** Returns 0, or a negative errno. */
int ion_close(int fd);
/** Makes a handle for the buffer behind `share_fd`. Returns 0, or a negative errno. */
int ion_import(int fd, int share_fd, ion_user_handle_t* handle);
/** Drops an imported handle. Returns 0, or a negative errno. */
int ion_free(int fd, ion_user_handle_t handle);
/** Non-zero when handles have to be dropped with `ion_free`, as on kernels before 4.12. */
int ion_is_legacy(int fd);

#ifdef __cplusplus
}
#endif
