/**
 * Service contexts: each plays one service on one display path. Part of the TV middleware client
 * library.
 */
#pragma once

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Prepares this process for service contexts. Returns 0, or a negative code. */
int32_t c_svctx_prepare_process_env(uint32_t ui4_flags);
/**
 * Opens the context named `ps_name` ("main_svctx", "sub_svctx") and writes its handle, which is
 * never 0.
 */
int32_t c_svctx_open(const char* ps_name, uint32_t* ph_svctx);

/**
 * The conditions of a selection, in this order: SERVICE_CHANGED, SIGNAL_LOCKED, STREAM_STARTED for
 * video and for audio (if the service has them), SERVICE_READY. Without a signal: only
 * SERVICE_CHANGED. For a service that is not in the lists: only NO_SERVICE, and the context
 * continues with its service.
 */
enum { SVCTX_COND_SIGNAL_LOCKED = 2, SVCTX_COND_STREAM_STARTED = 3, SVCTX_COND_SERVICE_READY = 4, SVCTX_COND_NO_SERVICE = 5 };
enum { SVCTX_STREAM_VIDEO = 1, SVCTX_STREAM_AUDIO = 2 };

/**
 * Types of c_svctx_get. The size must be at least that of the type; the size written is that of the
 * type.
 */
enum {
    SVCTX_GET_CHANNEL_ID = 1,     /**< uint32_t, 0 while nothing plays */
    SVCTX_GET_SERVICE = 2,        /**< SVL_REC_T of the service that plays */
    SVCTX_GET_MULTIPLEX = 3,      /**< TSL_REC_T of the service that plays */
    SVCTX_GET_SIGNAL_LOCKED = 4,  /**< uint32_t, 0 or 1 */
    SVCTX_GET_VIDEO_BLANK = 5,    /**< uint32_t, 0 or 1 */
    SVCTX_GET_AUDIO_MUTE = 6      /**< uint32_t, 0 or 1 */
};
/** Attributes of a stream. HELD_BACK, a uint32_t: 1 blanks the video or mutes the audio. */
enum { SVCTX_ATTR_HELD_BACK = 1 };
/** Types of c_svctx_generic_get_info: NUL-terminated texts, cut to the size. */
enum { SVCTX_INFO_SERVICE_NAME = 1, SVCTX_INFO_STREAM_FILE = 2 };

/** Encodings of audio. */
enum { AUDIO_ENCODING_UNKNOWN = 0, AUDIO_ENCODING_MPEG1 = 1, AUDIO_ENCODING_MPEG2 = 2, AUDIO_ENCODING_AAC = 3, AUDIO_ENCODING_HE_AAC = 4, AUDIO_ENCODING_AC3 = 5, AUDIO_ENCODING_EAC3 = 6, AUDIO_ENCODING_DTS = 7 };
/** Conditions, codes and streams of a service context. */
enum { SVCTX_COND_SERVICE_CHANGED = 1 };
enum { SVCTX_CODE_SERVICE_SELECTED = 1 };
enum { SVCTX_STREAM_ALL = 0 };

/** A service context reports a condition; `ui4_stream` is the stream type concerned. */
typedef void (*c_svctx_nfy_fct)(uint32_t h_svctx, uint32_t ui4_cond, uint32_t ui4_code, uint32_t ui4_stream, void* pv_tag);
/** Registers a handler for every condition of a context, whoever selected its service. */
int32_t c_svctx_set_listener(uint32_t h_svctx, c_svctx_nfy_fct pf_listener, void* pv_tag);

/**
 * The source descriptor: what a context is to play. It has 260 bytes where pointers have four. A
 * client sends the whole record as bytes; the service fills in the three named fields.
 */
typedef struct SVCTX_SRC_DESC_T {
    const char* ps_first_name;
    uint8_t aui1_before_value[8 - 4];
    uint32_t ui4_value;
    uint8_t aui1_before_second[216 - 12];
    const char* ps_second_name;
    uint8_t aui1_rest[260 - 220];
} SVCTX_SRC_DESC_T;

/** Resolution and format of the video source. */
typedef struct SVCTX_VIDEO_RESOLUTION_T {
    uint32_t ui4_width;
    uint32_t ui4_height;
    uint32_t ui4_frame_rate;      /**< thousandths of a frame per second */
    uint8_t ui1_progressive;
    uint8_t ui1_aspect_ratio;     /**< 2: 4:3, 3: 16:9 */
    uint8_t aui1_pad[2];
    char s_timing_type[116];
} SVCTX_VIDEO_RESOLUTION_T;

/** Audio of the service that plays. */
typedef struct SVCTX_AUDIO_INFO_T {
    uint32_t ui4_encoding;
    uint32_t ui4_sample_rate;     /**< Hz */
    uint32_t ui4_channels;
    uint32_t ui4_bit_rate;        /**< bits per second */
    char s_language[4];
    uint32_t ui4_pid;
} SVCTX_AUDIO_INFO_T;

/*
 * Resolution and audio are those of the service that plays; TV_NOT_FOUND if it has no such stream.
 * Width and height are those that the service type stands for. get_conn_attr and set_conn_attr are
 * not told the size of an attribute, so they return TV_NOT_SUPPORTED.
 */
int32_t c_svctx_get(uint32_t h_svctx, uint32_t ui4_type, void* pv_data, uint32_t* pui4_size);
int32_t c_svctx_get_video_src_resolution(uint32_t h_svctx, SVCTX_VIDEO_RESOLUTION_T* pt_resolution);
/**
 * Selects the service with the channel id `ui4_value` or, if that is 0, the first one with the name
 * `ps_first_name`. The mode, the sink and the rest of the record are ignored. Returns 0 when the
 * request is accepted; then `pf_select`, which may be null, is called with the conditions of this
 * selection.
 */
int32_t c_svctx_select_svc(uint32_t h_svctx, uint32_t ui4_mode, const SVCTX_SRC_DESC_T* pt_source, const void* pv_sink, c_svctx_nfy_fct pf_select, void* pv_tag);
int32_t c_svctx_set_stream_attr(uint32_t h_svctx, uint32_t ui4_stream_type, uint32_t ui4_attribute, const void* pv_data, uint32_t ui4_length);
int32_t c_svctx_get_conn_attr(uint32_t h_svctx, uint32_t ui4_type, uint32_t ui4_attribute, void* pv_data);
int32_t c_svctx_set_conn_attr(uint32_t h_svctx, uint32_t ui4_type, uint32_t ui4_attribute, void* pv_data);
int32_t c_svctx_get_audio_info(uint32_t h_svctx, SVCTX_AUDIO_INFO_T* pt_audio_info);
int32_t c_svctx_generic_get_info(uint32_t h_svctx, uint32_t ui4_type, uint32_t ui4_subtype, void* pv_data, uint32_t ui4_size);
int32_t c_svctx_generic_set_info(uint32_t h_svctx, uint32_t ui4_type, uint32_t ui4_subtype, void* pv_data, uint32_t ui4_size);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(SVCTX_VIDEO_RESOLUTION_T) == 132, "svctx record");
static_assert(sizeof(SVCTX_AUDIO_INFO_T) == 24, "svctx record");
static_assert(sizeof(void*) != 4 || (sizeof(SVCTX_SRC_DESC_T) == 260 && offsetof(SVCTX_SRC_DESC_T, ui4_value) == 8 && offsetof(SVCTX_SRC_DESC_T, ps_second_name) == 216), "svctx record");
