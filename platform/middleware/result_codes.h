/** Result codes of the middleware client's functions. Part of the TV middleware client library. */
#pragma once

/**
 * A function that returns a number, an id or an index returns 0 or more; every failure is negative.
 */
enum {
    TV_OK = 0,
    TV_INVALID_ARGUMENT = -1, /**< a pointer that cannot be written, a count or value out of range */
    TV_NOT_FOUND = -2,        /**< no such list, record, channel, handle or snapshot */
    TV_NOT_SUPPORTED = -3,    /**< this television has no such function */
    TV_FULL = -4,             /**< the list, or the number of snapshots, is at its limit */
    TV_BUSY = -5,             /**< in use already, not possible in the present state, or an unlock without a lock */
    TV_FAILED = -6            /**< the television failed; its log has the reason */
};
