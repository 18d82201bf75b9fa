/**
 * The records of the channel lists, byte for byte as they cross the interfaces: the software
 * television fills them, applications read them, the service only passes them on. All numbers are
 * little-endian and there are no pointers, so that the layout is the same on every processor. Texts
 * are UTF-8, NUL-terminated.
 */
#pragma once

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Broadcast media: the way by which a service reaches the television. */
enum { BRDCST_MEDIUM_UNKNOWN = 0, BRDCST_MEDIUM_DIG_TERRESTRIAL = 1, BRDCST_MEDIUM_DIG_CABLE = 2, BRDCST_MEDIUM_DIG_SATELLITE = 3 };

/** Broadcast types: the standard in which a service is broadcast. */
enum { BRDCST_TYPE_UNKNOWN = 0, BRDCST_TYPE_DVB = 1, BRDCST_TYPE_ATSC = 2, BRDCST_TYPE_ISDB = 3 };

/**
 * Service lists: one for each medium. A list id names a service list and the transport-stream list
 * beside it.
 */
enum { SVL_ID_TERRESTRIAL = 1, SVL_ID_CABLE = 2, SVL_ID_SATELLITE = 3 };

/** Bits of SVL_REC_T::ui4_nw_mask: the properties of a channel, and whether it is shown. */
enum {
    SB_VNET_ACTIVE = 1 << 0,
    SB_VNET_EPG = 1 << 1,
    SB_VNET_VISIBLE = 1 << 2,
    SB_VNET_RADIO_SERVICE = 1 << 3,
    SB_VNET_TV_SERVICE = 1 << 4,
    SB_VNET_SCRAMBLED = 1 << 5,
    SB_VNET_FAVORITE1 = 1 << 8,
    SB_VNET_FAVORITE2 = 1 << 9,
    SB_VNET_FAVORITE3 = 1 << 10,
    SB_VNET_FAVORITE4 = 1 << 11
};

/** The number of favourite lists of a service list, and the most channels that one can have. */
enum { FAV_LIST_COUNT = 4, FAV_LIST_MAX = 100 };

/** One service (channel). */
typedef struct SVL_REC_T {
    uint16_t ui2_svl_id;          /**< id of the list that the record is in */
    uint16_t ui2_svl_rec_id;      /**< record id in the list, from 1, stable while the list lives */
    uint32_t ui4_channel_id;      /**< unique over all lists, never 0 */
    uint32_t ui4_nw_mask;         /**< SB_VNET_… */
    uint32_t ui4_option_mask;     /**< bits for the application's use, kept across restarts */
    uint16_t ui2_tsl_id;          /**< id of the list of its multiplex */
    uint16_t ui2_tsl_rec_id;      /**< record id of its multiplex */
    uint16_t ui2_original_network_id;
    uint16_t ui2_transport_stream_id;
    uint16_t ui2_service_id;      /**< program number */
    uint16_t ui2_channel_number;  /**< the number the viewer types: logical channel number, else assigned in scan order */
    uint8_t ui1_brdcst_type;      /**< BRDCST_TYPE_… */
    uint8_t ui1_brdcst_medium;    /**< BRDCST_MEDIUM_… */
    uint8_t ui1_service_type;     /**< as in the service descriptor: 1 television, 2 radio, 25 HD television… */
    uint8_t ui1_free_ca_mode;     /**< 1 when scrambled */
    uint16_t ui2_pmt_pid;
    uint16_t ui2_pcr_pid;
    uint16_t ui2_video_pid;       /**< 0x1FFF when there is none */
    uint16_t ui2_audio_pid;       /**< of the first audio stream; 0x1FFF when there is none */
    uint8_t ui1_video_stream_type;
    uint8_t ui1_audio_stream_type;
    uint8_t ui1_audio_count;
    uint8_t ui1_subtitle_count;
    char s_audio_lang[4];         /**< ISO 639-2 of the first audio stream */
    uint16_t aui2_fav_index[FAV_LIST_COUNT]; /**< position in each favourite list, from 1; 0 if it is not in the list */
    char s_service_name[256];
    char s_provider_name[64];
    uint8_t aui1_reserved[20];
} SVL_REC_T;

/** Modulation of a multiplex. */
enum { MODULATION_UNKNOWN = 0, MODULATION_QPSK = 1, MODULATION_8PSK = 2, MODULATION_16QAM = 3, MODULATION_32QAM = 4, MODULATION_64QAM = 5, MODULATION_128QAM = 6, MODULATION_256QAM = 7 };

/** Polarisation of a satellite multiplex. */
enum { POLARIZATION_HORIZONTAL = 0, POLARIZATION_VERTICAL = 1, POLARIZATION_LEFT = 2, POLARIZATION_RIGHT = 3 };

/** One transport stream (multiplex). */
typedef struct TSL_REC_T {
    uint16_t ui2_tsl_id;          /**< id of the list that the record is in */
    uint16_t ui2_tsl_rec_id;      /**< record id in the list, from 1 */
    uint16_t ui2_original_network_id;
    uint16_t ui2_transport_stream_id;
    uint16_t ui2_network_id;
    uint16_t ui2_satl_rec_id;     /**< record id of the satellite; 0 if it is not from a satellite */
    uint32_t ui4_frequency_khz;   /**< 0 if the stream does not carry it */
    uint32_t ui4_symbol_rate;     /**< symbols per second; cable and satellite only */
    uint32_t ui4_bandwidth_hz;    /**< terrestrial only */
    uint8_t ui1_brdcst_type;
    uint8_t ui1_brdcst_medium;
    uint8_t ui1_modulation;       /**< MODULATION_… */
    uint8_t ui1_fec_inner;        /**< as coded in the delivery-system descriptors */
    uint8_t ui1_polarization;     /**< POLARIZATION_… */
    uint8_t ui1_dvb_s2;           /**< 1 for DVB-S2 */
    uint16_t ui2_orbital_position;/**< tenths of a degree */
    uint8_t ui1_west_east;        /**< 0 west, 1 east */
    uint8_t aui1_pad[3];
    uint32_t ui4_packets;         /**< packets read from the stream */
    uint32_t ui4_damaged_packets; /**< packets with lost synchronisation, a transport error or a break in continuity */
    uint32_t ui4_damaged_sections;/**< sections skipped: wrong checksum or length */
    uint16_t ui2_service_count;
    uint16_t ui2_reserved;
    char s_network_name[64];
    char s_source[256];           /**< the file that the multiplex was read from, without its folder */
    uint8_t aui1_reserved[256];
} TSL_REC_T;

/** One satellite. The television chose the layout of its fields. */
typedef struct SATL_REC_T {
    uint16_t ui2_satl_id;
    uint16_t ui2_satl_rec_id;
    uint16_t ui2_orbital_position; /**< tenths of a degree */
    uint8_t ui1_west_east;         /**< 0 west, 1 east */
    uint8_t ui1_enabled;
    uint32_t ui4_lnb_low_khz;
    uint32_t ui4_lnb_high_khz;
    uint32_t ui4_lnb_switch_khz;
    uint8_t ui1_diseqc_port;
    uint8_t ui1_lnb_power;
    uint8_t ui1_tone_22khz;
    uint8_t ui1_reserved;
    char s_name[64];
    uint8_t aui1_reserved[188];
} SATL_REC_T;

/** One network. */
typedef struct NWL_REC_T {
    uint16_t ui2_nwl_id;
    uint16_t ui2_nwl_rec_id;
    uint16_t ui2_network_id;
    uint16_t ui2_satl_rec_id;
    uint8_t ui1_brdcst_medium;
    uint8_t ui1_version;
    uint16_t ui2_transport_stream_count;
    char s_name[64];
    uint8_t aui1_reserved[228];
} NWL_REC_T;

/** The fields by which a BISS key is looked up. */
typedef struct BSL_HEADER_T {
    uint32_t ui4_frequency_khz;
    uint32_t ui4_symbol_rate;
    uint16_t ui2_program_id;
    uint8_t ui1_polarization;
    uint8_t aui1_reserved[5];
} BSL_HEADER_T;

/** One BISS key. The key is secret: never logged. */
typedef struct BSL_REC_T {
    BSL_HEADER_T t_header;
    uint16_t ui2_bsl_rec_id;
    uint8_t ui1_service_mode;
    uint8_t ui1_key_length;
    uint8_t aui1_key[8];
    uint8_t aui1_reserved[4];
} BSL_REC_T;

/** One entry of a favourite list. */
typedef struct FAV_ENTRY_T {
    uint32_t ui4_channel_id;
    uint16_t ui2_channel_number;
    uint16_t ui2_svl_rec_id;
} FAV_ENTRY_T;

/** The current favourite list. */
typedef struct FAV_LIST_T {
    uint16_t ui2_svl_id;
    uint8_t ui1_fav_list;
    uint8_t aui1_reserved[13];
    uint32_t ui4_count;
    FAV_ENTRY_T at_entry[FAV_LIST_MAX];
} FAV_LIST_T;

/**
 * A channel query: by mask, service type, broadcast type and network. A field of 0 matches
 * everything.
 */
typedef struct CHANNEL_QUERY_T {
    uint32_t ui4_nw_mask;
    uint32_t ui4_nw_mask_value;
    uint8_t ui1_service_type;
    uint8_t ui1_brdcst_type;
    uint16_t ui2_original_network_id;
} CHANNEL_QUERY_T;

/** Argument of a channel-list operation. */
typedef struct CHANNEL_IF_BLOCK_T {
    uint32_t ui4_channel_id;
    uint16_t ui2_svl_id;
    uint16_t ui2_value;
} CHANNEL_IF_BLOCK_T;

#ifdef __cplusplus
}
#endif

static_assert(sizeof(SVL_REC_T) == 396, "service record");
static_assert(offsetof(SVL_REC_T, s_service_name) == 56, "service record");
static_assert(sizeof(TSL_REC_T) == 628, "transport-stream record");
static_assert(offsetof(TSL_REC_T, s_network_name) == 52, "transport-stream record");
static_assert(sizeof(SATL_REC_T) == 276, "satellite record");
static_assert(sizeof(NWL_REC_T) == 304, "network record");
static_assert(sizeof(BSL_HEADER_T) == 16, "BISS key header");
static_assert(sizeof(BSL_REC_T) == 32, "BISS key record");
static_assert(sizeof(FAV_LIST_T) == 820, "favourite list");
static_assert(sizeof(CHANNEL_QUERY_T) == 12, "query block");
static_assert(sizeof(CHANNEL_IF_BLOCK_T) == 8, "interface block");
