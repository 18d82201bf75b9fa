/** Broadcast channels: selection and tuning. Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stddef.h>
#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Notification codes. */
enum {
    BROADCAST_NFY_CHANNEL_CHANGED = 1, /**< a channel was selected, or (id 0) nothing plays any more; pv_arg1: channel id; pv_arg2: 0 main window, 1 sub window; pv_arg3: list id; pv_arg4: 0 */
    BROADCAST_NFY_TUNING = 2,          /**< the tuner's state changed, before CHANNEL_CHANGED: SEARCHING, then LOCKED or FAILED; only IDLE if nothing plays any more; pv_arg1: BROADCAST_TUNING_…; pv_arg2: BROADCAST_TUNING_ERROR_…; pv_arg3: channel id; pv_arg4: 0 main window, 1 sub window */
    BROADCAST_NFY_BANNER = 3           /**< the banner was shown (pv_arg1 1) or hidden (0) */
};

/** Values of get_tuning_status, for the main window. IDLE while nothing is selected. */
enum { BROADCAST_TUNING_IDLE = 0, BROADCAST_TUNING_SEARCHING = 1, BROADCAST_TUNING_LOCKED = 2, BROADCAST_TUNING_FAILED = 3 };

/**
 * Values of get_tuning_error. NO_SIGNAL: the multiplex is not received. NO_SERVICE: it is received,
 * but has no streams of the service.
 */
enum { BROADCAST_TUNING_ERROR_NONE = 0, BROADCAST_TUNING_ERROR_NO_SIGNAL = 1, BROADCAST_TUNING_ERROR_NO_SERVICE = 2 };

/** Flags of a silent selection: the banner stays as it is; no notifications of this module. */
enum { BROADCAST_SILENT_NO_BANNER = 1 << 0, BROADCAST_SILENT_NO_NOTIFICATION = 1 << 1 };

/**
 * Keys that key_handler knows; they act on the main window. Digits form a number: OK, the last
 * digit that a number can have, or some time without a digit selects the channel of that number. OK
 * without digits shows the banner. Up and down go through the visible channels in the order of
 * their numbers, as a ring. Any key that is not a digit discards the digits before it.
 */
enum { BROADCAST_KEY_0 = 0, BROADCAST_KEY_9 = 9, BROADCAST_KEY_OK = 13, BROADCAST_KEY_CHANNEL_UP = 20, BROADCAST_KEY_CHANNEL_DOWN = 21, BROADCAST_KEY_LAST_CHANNEL = 22 };

/** Connection attributes of a service context. */
enum { BROADCAST_CONN_ATTR_FREQUENCY_KHZ = 0, BROADCAST_CONN_ATTR_SYMBOL_RATE = 1, BROADCAST_CONN_ATTR_MODULATION = 2, BROADCAST_CONN_ATTR_BANDWIDTH_HZ = 3, BROADCAST_CONN_ATTR_MEDIUM = 4 };

/** Levels of the target regions. */
enum { BROADCAST_REGION_PRIMARY = 1, BROADCAST_REGION_SECONDARY = 2, BROADCAST_REGION_TERTIARY = 3 };

/** Types of the streams of a service. */
enum { BROADCAST_STREAM_TYPE_AUDIO = 0, BROADCAST_STREAM_TYPE_VIDEO = 1, BROADCAST_STREAM_TYPE_SUBTITLE = 2, BROADCAST_STREAM_TYPE_TELETEXT = 3 };
typedef uint32_t QORTVAPI_STREAM_TYPE_T;

/** A frequency to tune to. */
typedef struct QORTVAPI_FREQ_INFO_T {
    uint32_t ui4_frequency_khz;
    uint32_t ui4_symbol_rate;  /**< symbols a second */
    uint32_t ui4_bandwidth_hz;
    uint8_t ui1_brdcst_medium; /**< BRDCST_MEDIUM_… */
    uint8_t ui1_modulation;    /**< MODULATION_… */
    uint8_t ui1_polarization;  /**< POLARIZATION_… */
    uint8_t ui1_fec_inner;
    uint32_t ui4_upper_khz;    /**< analogue: where the search ends */
    uint32_t ui4_lower_khz;
    int32_t i4_offset_khz;
    uint16_t ui2_color_system;
    uint16_t ui2_audio_system;
} QORTVAPI_FREQ_INFO_T;

/** Whether an application covers the picture. */
typedef struct QORTVAPI_EXTERNAL_UI_STATUS_T {
    uint32_t ui4_ui_id;
    uint8_t ui1_visible;
} QORTVAPI_EXTERNAL_UI_STATUS_T;

/** A target region of a broadcast. */
typedef struct QORTVAPI_SB_DVB_REGION_T {
    uint8_t ui1_depth;    /**< number of codes that are used: the level */
    uint16_t ui2_primary;
    uint16_t ui2_secondary;
    uint16_t ui2_tertiary;
    char s_name[34];
} QORTVAPI_SB_DVB_REGION_T;

/** Tuning, channel change or signal state. */
typedef void (*a_qortvapi_broadcast_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_broadcast_register_callback(a_qortvapi_broadcast_nfy_fct pf_callback, void* pv_tag);

/*
 * Channel selection, in the main window unless a focus (0 main, 1 sub) is given. With `reselect`
 * the channel is tuned again if it is the current one; without it such a selection has no effect
 * and sends no notification. A selection in the main window shows the banner, unless an application
 * covers the picture. A channel is named by list and record id, by channel id (list and record id
 * 0), or by both if they agree. A number is looked up in the current channel's list first; minor
 * numbers are 0. A programme number is a service id; medium 0: any. TV_NOT_FOUND if there is no
 * such channel.
 */
int32_t a_qortvapi_broadcast_select_channel(uint16_t ui2_svl_id, uint16_t ui2_svl_rec_id, uint32_t ui4_channel_id, bool b_reselect);
int32_t a_qortvapi_broadcast_select_channel_by_focusid(uint16_t ui2_svl_id, uint16_t ui2_svl_rec_id, uint32_t ui4_channel_id, bool b_reselect, uint16_t ui2_focus_id);
int32_t a_qortvapi_broadcast_select_channel_by_chan_num(uint32_t ui4_major, uint32_t ui4_minor, bool b_reselect);
int32_t a_qortvapi_broadcast_select_channel_by_chan_id(uint32_t ui4_channel_id, bool b_reselect);
int32_t a_qortvapi_broadcast_select_channel_by_prog_no(uint8_t ui1_medium, uint16_t ui2_program_number);
int32_t a_qortvapi_broadcast_select_channel_silently(uint8_t ui1_focus_id, uint16_t ui2_svl_id, uint16_t ui2_svl_rec_id, uint32_t ui4_channel_id, uint32_t ui4_flags);
int32_t a_qortvapi_broadcast_set_banner_visibility(bool b_visible);

/* Tuning, keys, CAM and number queries. */
int32_t a_qortvapi_broadcast_get_tuning_status(uint32_t* pui4_status);
int32_t a_qortvapi_broadcast_get_tuning_error(int32_t* pi4_error);
/*
 * TV_NOT_SUPPORTED for a key that is not listed above; TV_NOT_FOUND if there is no channel to
 * select.
 */
int32_t a_qortvapi_broadcast_key_handler(uint32_t ui4_key_code);
/* Tunes to the last channel, or to the first visible one if there is no last one. */
int32_t a_qortvapi_broadcast_switch_input_to_tv(void);
int32_t a_qortvapi_broadcast_is_cam_installed(uint8_t* pui1_installed);
/* 1 if the current service has more than one audio track, or subtitles. */
int32_t a_qortvapi_broadcast_is_additional_service_available(uint8_t* pui1_available);
int32_t a_qortvapi_broadcast_is_support_4_digits_chan_no(uint8_t* pui1_supported);
/* 1 if a number that the viewer typed has selected a channel since the last reset. */
int32_t a_qortvapi_broadcast_is_digits_key_handled(uint8_t* pui1_handled);
/*
 * Whether a channel has that number or, unless b_exact is set, a number that begins with its
 * digits.
 */
int32_t a_qortvapi_broadcast_is_channel_number_valid(uint32_t ui4_major, uint32_t ui4_minor, bool b_exact, uint8_t* pui1_valid);
int32_t a_qortvapi_broadcast_set_favorite_icon_on_banner(bool b_shown);
int32_t a_qortvapi_broadcast_reset_digits_key_handled(void);
/*
 * The number of regions of a level; a region by its index among those of a parent, which is a code
 * of the level above (0 for the first level).
 */
int32_t a_qortvapi_broadcast_get_target_region_num(uint16_t ui2_level, uint16_t* pui2_count);
int32_t a_qortvapi_broadcast_get_target_regions(uint16_t ui2_level, uint16_t ui2_parent, uint16_t ui2_index, QORTVAPI_SB_DVB_REGION_T* pt_region);
/*
 * A tuner type is the BRDCST_MEDIUM_… that it receives; TV_NOT_SUPPORTED for others. Numbers have
 * one part.
 */
int32_t a_qortvapi_broadcast_get_max_possible_major_chan_no(uint16_t ui2_tuner_type, uint32_t* pui4_number);
int32_t a_qortvapi_broadcast_get_max_possible_minor_chan_no(uint16_t ui2_tuner_type, uint32_t* pui4_number);
int32_t a_qortvapi_broadcast_get_max_possible_major_digits(uint16_t ui2_tuner_type, uint32_t* pui4_digits);
int32_t a_qortvapi_broadcast_get_max_possible_minor_digits(uint16_t ui2_tuner_type, uint32_t* pui4_digits);
/*
 * The name of the CAM in the slot, empty without one. pc_name has room for ui4_length bytes and a
 * NUL.
 */
int32_t a_qortvapi_broadcast_get_cam_operator_name(uint32_t ui4_length, char* pc_name);
int32_t a_qortvapi_broadcast_get_mheg_input_event_mask(uint8_t ui1_mask, uint8_t* pui1_set);

/*
 * Service contexts. ps_context: "main" or "sub", also "main_svctx" and "sub_svctx", whole or cut to
 * five characters.
 */
/*
 * Stops the context until something is selected. It has stopped when the function returns, whatever
 * b_block is.
 */
int32_t a_qortvapi_broadcast_sync_stop(const char* ps_context, bool b_block);
/* For the main window: 1 if there is no signal, or nothing is selected. */
int32_t a_qortvapi_broadcast_is_signal_loss(void);
/*
 * For the main window, in per cent: 0 without a signal, otherwise by the share of damaged packets;
 * TV_NOT_FOUND while nothing is selected.
 */
int32_t a_qortvapi_broadcast_get_signal_level(void);
int32_t a_qortvapi_broadcast_get_signal_quality(void);
/* TV_NOT_FOUND if the service that plays has no such stream. */
int32_t a_qortvapi_broadcast_strm_is_orig_scramble(const char* ps_context, QORTVAPI_STREAM_TYPE_T e_stream_type, uint8_t* pui1_scrambled);
/*
 * Selects the first channel of the multiplex at that frequency (within 500 kHz; on satellite with
 * that polarisation); medium 0: any. TV_NOT_FOUND, without a change, if there is none.
 */
int32_t a_qortvapi_broadcast_change_freq(const char* ps_context, const QORTVAPI_FREQ_INFO_T* pt_frequency);
/* TV_NOT_SUPPORTED: this television has no analogue tuner. */
int32_t a_qortvapi_broadcast_ana_channel_fine_tune(const char* ps_context, int32_t i4_offset, bool b_tune_now);
int32_t a_qortvapi_broadcast_get_connect_attr(const char* ps_context, int32_t i4_attribute, int32_t* pi4_value);
/* Called by an application when it begins or ceases to cover the picture. */
int32_t a_qortvapi_broadcast_transfer_external_ui_status(const QORTVAPI_EXTERNAL_UI_STATUS_T* pt_status);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(QORTVAPI_FREQ_INFO_T) == 32 && offsetof(QORTVAPI_FREQ_INFO_T, ui4_upper_khz) == 16 && offsetof(QORTVAPI_FREQ_INFO_T, ui2_color_system) == 28, "broadcast record");
static_assert(sizeof(QORTVAPI_EXTERNAL_UI_STATUS_T) == 8 && offsetof(QORTVAPI_EXTERNAL_UI_STATUS_T, ui1_visible) == 4, "broadcast record");
static_assert(sizeof(QORTVAPI_SB_DVB_REGION_T) == 42 && offsetof(QORTVAPI_SB_DVB_REGION_T, ui2_primary) == 2 && offsetof(QORTVAPI_SB_DVB_REGION_T, s_name) == 8, "broadcast record");
