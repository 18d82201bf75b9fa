#include "program_map.h"

#include "descriptors.h"

namespace television {
namespace {

constexpr uint8_t kStreamPrivate = 0x06;

bool isVideo(uint8_t streamType) {
    switch (streamType) {
        case 0x01:  // MPEG-1
        case 0x02:  // MPEG-2
        case 0x10:  // MPEG-4 part 2
        case 0x1B:  // AVC
        case 0x24:  // HEVC
        case 0x33:  // VVC
        case 0x42:  // AVS
            return true;
        default:
            return false;
    }
}

bool isAudio(uint8_t streamType) {
    switch (streamType) {
        case 0x03:  // MPEG-1
        case 0x04:  // MPEG-2
        case 0x0F:  // AAC
        case 0x11:  // AAC with LATM
        case 0x81:  // AC-3
        case 0x87:  // enhanced AC-3
            return true;
        default:
            return false;
    }
}

/** What the descriptors of one elementary stream say. */
struct StreamDescriptors {
    bool audio = false;
    bool scrambled = false;
    unsigned subtitles = 0;
    std::string language;
};

StreamDescriptors read(const dvbpsi_descriptor_t* list) {
    StreamDescriptors result;
    forEachDescriptor(list, [&](uint8_t tag, ByteView content) {
        switch (tag) {
            case kDescriptorConditionalAccess:
                result.scrambled = true;
                break;
            case kDescriptorLanguage:
                if (content.size() >= 4) {
                    result.language.assign(reinterpret_cast<const char*>(content.data()), 3);
                }
                break;
            case kDescriptorAc3:
            case kDescriptorEnhancedAc3:
            case kDescriptorDts:
            case kDescriptorAac:
                result.audio = true;
                break;
            case kDescriptorSubtitling:
                result.subtitles += static_cast<unsigned>(content.size() / 8);
                break;
            case kDescriptorTeletext:
                result.subtitles += teletextSubtitles(content);
                break;
            default:
                break;
        }
    });
    return result;
}

/** A language code as three letters; anything else is left out of the record. */
std::string letters(const std::string& code) {
    for (const char c : code) {
        if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'))) return {};
    }
    return code;
}

}  // namespace

ProgramMap readProgramMap(const dvbpsi_pmt_t& pmt) {
    ProgramMap map;
    map.pcrPid = pmt.i_pcr_pid & 0x1FFF;
    map.scrambled = read(pmt.p_first_descriptor).scrambled;
    for (const dvbpsi_pmt_es_t* stream = pmt.p_first_es; stream != nullptr;
         stream = stream->p_next) {
        const StreamDescriptors descriptors = read(stream->p_first_descriptor);
        map.scrambled = map.scrambled || descriptors.scrambled;
        map.subtitleCount += descriptors.subtitles;
        if (isVideo(stream->i_type)) {
            if (map.videoPid != kNoPid) continue;
            map.videoPid = stream->i_pid & 0x1FFF;
            map.videoStreamType = stream->i_type;
        } else if (isAudio(stream->i_type) ||
                   (stream->i_type == kStreamPrivate && descriptors.audio)) {
            if (map.audioCount++ > 0) continue;
            map.audioPid = stream->i_pid & 0x1FFF;
            map.audioStreamType = stream->i_type;
            map.audioLanguage = letters(descriptors.language);
        }
    }
    return map;
}

void applyProgramMap(const ProgramMap& map, ParsedService& service) {
    service.pcrPid = map.pcrPid;
    service.videoPid = map.videoPid;
    service.audioPid = map.audioPid;
    service.videoStreamType = map.videoStreamType;
    service.audioStreamType = map.audioStreamType;
    service.audioCount = map.audioCount;
    service.subtitleCount = map.subtitleCount;
    service.audioLanguage = map.audioLanguage;
    service.scrambled = map.scrambled;
}

}  // namespace television
