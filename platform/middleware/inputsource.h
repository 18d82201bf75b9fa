/**
 * Input sources: their records, signal, names, and the change of source. Part of the TV middleware
 * client library.
 */
#pragma once

#include <assert.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Types of inputs. */
enum { INPUT_DEVICE_TYPE_TV = 0, INPUT_DEVICE_TYPE_AV = 1, INPUT_DEVICE_TYPE_SCART = 2, INPUT_DEVICE_TYPE_COMPONENT = 3, INPUT_DEVICE_TYPE_VGA = 4, INPUT_DEVICE_TYPE_HDMI = 5 };
typedef uint32_t INPUT_DEVICE_TYPE_T;

/**
 * Input lines of the television, each a GPIO of power control. TV_NOT_FOUND for SCART_2: there is
 * one SCART.
 */
enum { INPUT_GPIO_SCART_1 = 0, INPUT_GPIO_SCART_2 = 1, INPUT_GPIO_HDMI_HPD = 2, INPUT_GPIO_COUNT = 3 };
typedef uint32_t INPUT_GPIO_T_IDX;

/** The ids of the sources, which are also their indexes. */
enum { INPUT_SOURCE_TV = 0, INPUT_SOURCE_AV = 1, INPUT_SOURCE_SCART_1 = 2, INPUT_SOURCE_COMPONENT = 3, INPUT_SOURCE_VGA = 4, INPUT_SOURCE_HDMI_1 = 5, INPUT_SOURCE_HDMI_2 = 6, INPUT_SOURCE_HDMI_3 = 7, INPUT_SOURCE_HDMI_4 = 8, INPUT_SOURCE_COUNT = 9 };

/**
 * The number of labels for a source: index 0 is none, then Game, PC, DVD, Blu-ray, Set-top box,
 * Satellite, Cable, Camera, Music.
 */
enum { INPUT_LABEL_COUNT = 10 };
/** The longest name that the viewer can give to a source, in bytes. */
enum { INPUT_USER_NAME_MAX = 32 };

/** Bits of QORTVAPI_INPUT_SOURCE_RECORD_T::ui4_flags. */
enum { INPUT_SOURCE_HAS_TUNER = 1 << 0, INPUT_SOURCE_HAS_AUDIO = 1 << 1, INPUT_SOURCE_DIGITAL = 1 << 2 };

/** One source. */
typedef struct QORTVAPI_INPUT_SOURCE_RECORD_T {
    uint8_t ui1_source_id;
    uint8_t ui1_device_type;    /**< INPUT_DEVICE_TYPE_… */
    uint8_t ui1_internal_index; /**< index among the inputs of its type, from 0 */
    char s_name[33];
    uint32_t ui4_flags;         /**< INPUT_SOURCE_… */
    uint8_t ui1_connected;      /**< TV: always 1; others: configuration item input.….connected */
} QORTVAPI_INPUT_SOURCE_RECORD_T;

/** Two sources that share a plug. */
typedef struct QORTVAPI_INPUT_SHARE_PIN_RECORD_T {
    uint8_t ui1_source_id;
    uint8_t ui1_other_source_id;
} QORTVAPI_INPUT_SHARE_PIN_RECORD_T;

/*
 * A video path is "main" or "sub", otherwise TV_INVALID_ARGUMENT. TV_NOT_FOUND for a source, line
 * or pair that does not exist. TV has a signal if its channel's multiplex and service have one;
 * another source has one while a device is connected.
 */
int32_t a_qortvapi_inputsource_isVideoSignalAvailable(const char* ps_video_path, uint8_t* pui1_available);
int32_t a_qortvapi_inputsource_isAudioSignalAvailable(const char* ps_video_path, uint8_t* pui1_available);
int32_t a_qortvapi_inputsource_get_gpioid_byidx(INPUT_GPIO_T_IDX e_index, uint32_t* pui4_gpio_id);
/* The two sources that share a plug: AV and Component. */
int32_t a_qortvapi_inputsource_get_hybrid_video_internal_id(void);
int32_t a_qortvapi_inputsource_get_hybrid_comp_internal_id(void);
int32_t a_qortvapi_inputsource_get_sourcetotalnum(void);
int32_t a_qortvapi_inputsource_get_sharepinrec_byidx(int32_t i4_index, QORTVAPI_INPUT_SHARE_PIN_RECORD_T* pt_record);
int32_t a_qortvapi_inputsource_get_sourcerec_byidx(int32_t i4_index, QORTVAPI_INPUT_SOURCE_RECORD_T* pt_record);

/*
 * Names: the viewer's name of the source, otherwise its label, otherwise its own name. pc_name has
 * room for 256 bytes, and ui4_length may be any number: at most the smaller of the two is written,
 * with the NUL; TV_INVALID_ARGUMENT for 0.
 */
int32_t a_qortvapi_inputsource_get_currentsourcename(char* pc_name, uint32_t ui4_length);
int32_t a_qortvapi_inputsource_get_currentsourcename_bypath(char* pc_name, uint32_t ui4_length, const char* ps_video_path);
int32_t a_qortvapi_inputsource_get_sourcename_bysourceid(int32_t i4_source_id, char* pc_name, uint32_t ui4_length);

/*
 * Change of source, of the main path if none is named. Two sources conflict if the television
 * cannot show them at the same time: the same source twice, except TV, which has two tuners; two
 * sources on one plug; two HDMI sources, for which there is one receiver. If the source conflicts
 * with the one on the other path, the higher priority (0 if none is given) wins, and of equal ones
 * the source that plays: either the other path is stopped, or the change is refused with TV_BUSY. A
 * blocked source is refused with TV_BUSY, too. available: 1 if a change of priority 0 would
 * succeed. A source need not be connected. TV plays the path's last channel; to select a channel in
 * any other way also changes to TV. The main path keeps its source over a restart.
 */
int32_t a_qortvapi_inputsource_changesource_bysourceid(int32_t i4_source_id);
int32_t a_qortvapi_inputsource_is_source_available_bysourceidandpath(int32_t i4_source_id, const char* ps_video_path, uint8_t* pui1_available);
int32_t a_qortvapi_inputsource_changesource_bysourceidandpath(int32_t i4_source_id, const char* ps_video_path);
int32_t a_qortvapi_inputsource_cs_bysourceidandpathandpriority(int32_t i4_source_id, const char* ps_video_path, uint16_t ui2_priority);

/*
 * State and labels. Settings are kept over a restart. source_block: the setting; block: whether it
 * is in force, which it is while lock.inputs is on. A block prevents a change to the source, but
 * does not stop it. autodetect: when a device is connected, the main path changes to the source
 * with priority 0.
 */
int32_t a_qortvapi_inputsource_is_block_bysourceid(int32_t i4_source_id, uint8_t* pui1_blocked);
int32_t a_qortvapi_inputsource_is_source_block_bysourceid(int32_t i4_source_id, uint8_t* pui1_blocked);
int32_t a_qortvapi_inputsource_is_source_autodetect_bysourceid(int32_t i4_source_id, uint8_t* pui1_autodetect);
int32_t a_qortvapi_inputsource_set_source_blockstatus_bysourceid(int32_t i4_source_id, bool b_blocked);
int32_t a_qortvapi_inputsource_set_source_autodetectstatus_bysourceid(int32_t i4_source_id, bool b_autodetect);
int32_t a_qortvapi_inputsource_get_source_inputlabelidx_bysourceid(int32_t i4_source_id, uint8_t* pui1_label_index);
int32_t a_qortvapi_inputsource_set_source_inputlabelidx_bysourceid(int32_t i4_source_id, uint8_t ui1_label_index);
int32_t a_qortvapi_inputsource_get_userdefname_bysourceid(int32_t i4_source_id, char* pc_name, uint32_t ui4_length);
/*
 * An empty name removes the viewer's name. TV_INVALID_ARGUMENT for a name that is too long or has
 * control characters.
 */
int32_t a_qortvapi_inputsource_set_userdefname_bysourceid(int32_t i4_source_id, const char* ps_name);
/* The index counts among the inputs of the type, from 0. */
int32_t a_qortvapi_inputsource_get_external_device_has_signal(INPUT_DEVICE_TYPE_T e_device_type, int32_t i4_index, uint8_t* pui1_has_signal);
/*
 * Stops the path, which keeps its source. It has stopped when the function returns, whatever
 * b_block is.
 */
int32_t a_qortvapi_inputsource_sync_stop(const char* ps_video_path, bool b_block);
int32_t a_qortvapi_inputsource_query_conflict(int32_t i4_source_id, int32_t i4_other_source_id, uint8_t* pui1_conflict);
/* Writes 0: no HDMI input supports MHL. */
int32_t a_qortvapi_inputsource_get_mhl_port_num(uint8_t* pui1_count);
/* Whether TV is blocked. */
int32_t a_qortvapi_inputsource_check_menu_tv_block(uint8_t* pui1_blocked);
/* Autodetect of all SCART sources. */
int32_t a_qortvapi_inputsource_set_scart_auto_jump(bool b_enabled);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(QORTVAPI_INPUT_SOURCE_RECORD_T) == 44 && offsetof(QORTVAPI_INPUT_SOURCE_RECORD_T, s_name) == 3 && offsetof(QORTVAPI_INPUT_SOURCE_RECORD_T, ui4_flags) == 36 && offsetof(QORTVAPI_INPUT_SOURCE_RECORD_T, ui1_connected) == 40, "input source record");
static_assert(sizeof(QORTVAPI_INPUT_SHARE_PIN_RECORD_T) == 2, "share-pin record");
