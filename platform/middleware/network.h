/** Wake on network. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Whether a packet from the network may wake the television. */
enum { NETWORK_WOL_OFF = 0, NETWORK_WOL_ON = 1 };
int32_t a_qortvapi_network_set_wifi_wol_ctrl(int32_t i4_control);
int32_t a_qortvapi_network_get_wifi_wol_ctrl(int32_t* pi4_control);
int32_t a_qortvapi_network_set_eth_wol_ctrl(int32_t i4_control);
int32_t a_qortvapi_network_get_eth_wol_ctrl(int32_t* pi4_control);

#ifdef __cplusplus
}
#endif
