#include "television/stream/program_map.h"

#include "television/stream/descriptors.h"

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

/** What the descriptors of one elementary stream say of it. */
struct StreamDescriptors {
    bool audio = false;  ///< a descriptor names an audio encoding
    bool scrambled = false;
    unsigned subtitles = 0;
    std::string language;
    uint8_t audioType = 0;
    uint8_t audioTag = 0;               ///< of the descriptor that names the encoding
    std::vector<SubtitleTrack> tracks;  ///< without their PID
};

/** The language code when it consists of letters, else an empty text. */
std::string lettersOnly(const std::string& code) {
    for (const char c : code) {
        if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'))) return {};
    }
    return code;
}

std::string languageAt(ByteView content, size_t at) {
    return lettersOnly(std::string(reinterpret_cast<const char*>(content.data()) + at, 3));
}

/** Adds the tracks of a subtitling descriptor. Its entries have eight bytes: language, type,
 * composition page, ancillary page. */
void addSubtitling(ByteView content, std::vector<SubtitleTrack>& tracks) {
    for (size_t at = 0; at + 8 <= content.size() && tracks.size() < ServiceTracks::kMost; at += 8) {
        tracks.push_back(
                {kNoPid, false, content.u8(at + 3), content.u16(at + 4), languageAt(content, at)});
    }
}

/** Adds the subtitles of a teletext descriptor. Its entries have five bytes: language, type and
 * magazine, page. */
void addTeletext(ByteView content, std::vector<SubtitleTrack>& tracks) {
    for (size_t at = 0; at + 5 <= content.size() && tracks.size() < ServiceTracks::kMost; at += 5) {
        const uint8_t type = content.u8(at + 3) >> 3;
        if (!isTeletextSubtitle(type)) continue;
        const auto page = static_cast<uint16_t>((content.u8(at + 3) & 7) << 8 | content.u8(at + 4));
        tracks.push_back({kNoPid, true, type, page, languageAt(content, at)});
    }
}

StreamDescriptors readDescriptors(const dvbpsi_descriptor_t* list) {
    StreamDescriptors result;
    forEachDescriptor(list, [&](uint8_t tag, ByteView content) {
        switch (tag) {
            case kDescriptorConditionalAccess:
                result.scrambled = true;
                break;
            case kDescriptorLanguage:
                if (content.size() >= 4) {
                    result.language.assign(reinterpret_cast<const char*>(content.data()), 3);
                    result.audioType = content.u8(3);
                }
                break;
            case kDescriptorAc3:
            case kDescriptorEnhancedAc3:
            case kDescriptorDts:
            case kDescriptorAac:
                result.audio = true;
                result.audioTag = tag;
                break;
            case kDescriptorSubtitling:
                result.subtitles += static_cast<unsigned>(content.size() / 8);
                addSubtitling(content, result.tracks);
                break;
            case kDescriptorTeletext:
                result.subtitles += teletextSubtitles(content);
                addTeletext(content, result.tracks);
                break;
            default:
                break;
        }
    });
    return result;
}

}  // namespace

ProgramMap readProgramMap(const dvbpsi_pmt_t& pmt) {
    ProgramMap map;
    map.pcrPid = pmt.i_pcr_pid & 0x1FFF;
    map.scrambled = readDescriptors(pmt.p_first_descriptor).scrambled;
    for (const dvbpsi_pmt_es_t* stream = pmt.p_first_es; stream != nullptr;
         stream = stream->p_next) {
        const StreamDescriptors descriptors = readDescriptors(stream->p_first_descriptor);
        map.scrambled = map.scrambled || descriptors.scrambled;
        map.subtitleCount += descriptors.subtitles;
        for (SubtitleTrack track : descriptors.tracks) {
            if (map.tracks.subtitles.size() == ServiceTracks::kMost) break;
            track.pid = stream->i_pid & 0x1FFF;
            map.tracks.subtitles.push_back(std::move(track));
        }
        if (isVideo(stream->i_type)) {
            if (map.videoPid != kNoPid) continue;
            map.videoPid = stream->i_pid & 0x1FFF;
            map.videoStreamType = stream->i_type;
        } else if (isAudio(stream->i_type) ||
                   (stream->i_type == kStreamPrivate && descriptors.audio)) {
            if (map.tracks.audio.size() < ServiceTracks::kMost) {
                map.tracks.audio.push_back({static_cast<uint16_t>(stream->i_pid & 0x1FFF),
                                            stream->i_type, descriptors.audioTag,
                                            descriptors.audioType,
                                            lettersOnly(descriptors.language)});
            }
            if (map.audioCount++ > 0) continue;
            map.audioPid = stream->i_pid & 0x1FFF;
            map.audioStreamType = stream->i_type;
            map.audioLanguage = lettersOnly(descriptors.language);
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
    service.tracks = map.tracks;
}

}  // namespace television
