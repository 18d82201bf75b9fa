// The tracks in program maps.
#include "television/stream/program_map.h"

#include <gtest/gtest.h>

#include <deque>
#include <vector>

#include "middleware/audio_info.h"
#include "middleware/svctx.h"
#include "television/core/playing.h"
#include "television/stream/descriptors.h"

namespace {

using television::readProgramMap;

/** A program map in the form in which the table parser hands it over. */
class Map {
  public:
    Map& stream(uint8_t type, uint16_t pid) {
        mStreams.push_back({});
        mStreams.back().i_type = type;
        mStreams.back().i_pid = pid;
        if (mStreams.size() > 1) mStreams[mStreams.size() - 2].p_next = &mStreams.back();
        return *this;
    }
    /** Of the stream that came last. */
    Map& descriptor(uint8_t tag, std::vector<uint8_t> content) {
        mContents.push_back(std::move(content));
        mDescriptors.push_back({});
        dvbpsi_descriptor_t& added = mDescriptors.back();
        added.i_tag = tag;
        added.i_length = static_cast<uint8_t>(mContents.back().size());
        added.p_data = mContents.back().data();
        dvbpsi_descriptor_t** end = &mStreams.back().p_first_descriptor;
        while (*end != nullptr) end = &(*end)->p_next;
        *end = &added;
        return *this;
    }
    television::ProgramMap read() {
        dvbpsi_pmt_t pmt = {};
        if (!mStreams.empty()) pmt.p_first_es = &mStreams.front();
        return readProgramMap(pmt);
    }

  private:
    std::deque<dvbpsi_pmt_es_t> mStreams;
    std::deque<dvbpsi_descriptor_t> mDescriptors;
    std::deque<std::vector<uint8_t>> mContents;
};

TEST(TelevisionProgramMap, AudioTracks) {
    const auto map = Map().stream(0x1B, 0x100)
                             .stream(0x03, 0x101)
                             .descriptor(television::kDescriptorLanguage, {'d', 'e', 'u', 0})
                             .stream(0x06, 0x102)
                             .descriptor(television::kDescriptorLanguage, {'d', 'e', 'u', 3})
                             .descriptor(television::kDescriptorEnhancedAc3, {0})
                             .stream(0x06, 0x103)  // private data that are no audio
                             .stream(0x0F, 0x104)
                             .descriptor(television::kDescriptorLanguage, {'1', 0, 0xFF, 1})
                             .stream(0x11, 0x105)
                             .descriptor(television::kDescriptorLanguage, {'e', 'n'})
                             .read();
    const auto& audio = map.tracks.audio;
    ASSERT_EQ(audio.size(), 4u);
    EXPECT_EQ(audio[0].language, "deu");
    EXPECT_EQ(audio[0].audioType, AUDIO_TYPE_UNDEFINED);
    EXPECT_EQ(audio[1].pid, 0x102);
    EXPECT_EQ(audio[1].audioType, AUDIO_TYPE_VISUALLY_IMPAIRED);
    EXPECT_EQ(television::audioEncodingOf(audio[1]), uint32_t{AUDIO_ENCODING_EAC3});
    EXPECT_EQ(audio[2].language, "") << "no letters";
    EXPECT_EQ(audio[2].audioType, AUDIO_TYPE_CLEAN);
    EXPECT_EQ(television::audioEncodingOf(audio[2]), uint32_t{AUDIO_ENCODING_AAC});
    EXPECT_EQ(audio[3].language, "") << "cut short";
}

TEST(TelevisionProgramMap, SubtitleTracks) {
    const auto map = Map().stream(0x06, 0x201)
                             .descriptor(television::kDescriptorSubtitling,
                                         {'f', 'r', 'a', 0x10, 0x12, 0x34, 0, 2,  //
                                          'n', 'l', 'd', 0x20, 0, 3, 0})          // cut short
                             .stream(0x06, 0x202)
                             .descriptor(television::kDescriptorTeletext,
                                         {'f', 'r', 'a', 1 << 3 | 1, 0x00,  // the index page
                                          's', 'w', 'e', 2 << 3 | 0, 0x88,  //
                                          'f', 'i', 'n', 5 << 3 | 3, 0x89})
                             .read();
    const auto& subtitles = map.tracks.subtitles;
    ASSERT_EQ(subtitles.size(), 3u);
    EXPECT_EQ(subtitles[0].pid, 0x201);
    EXPECT_EQ(subtitles[0].language, "fra");
    EXPECT_EQ(subtitles[0].type, 0x10);
    EXPECT_EQ(subtitles[0].page, 0x1234);
    EXPECT_TRUE(subtitles[1].teletext);
    EXPECT_EQ(subtitles[1].page, 0x088);
    EXPECT_EQ(subtitles[2].language, "fin");
    EXPECT_EQ(subtitles[2].page, 0x389);
}

TEST(TelevisionProgramMap, KeepsTheFirstOfTooManyTracks) {
    Map map;
    for (uint16_t i = 0; i < 40; ++i) {
        map.stream(0x03, static_cast<uint16_t>(0x100 + i));
        map.descriptor(television::kDescriptorSubtitling, std::vector<uint8_t>(248, 'a'));
    }
    const auto read = map.read();
    EXPECT_EQ(read.audioCount, 40u);
    EXPECT_EQ(read.subtitleCount, 40u * 31);
    EXPECT_EQ(read.tracks.audio.size(), television::ServiceTracks::kMost);
    EXPECT_EQ(read.tracks.audio.back().pid, 0x10F);
    EXPECT_EQ(read.tracks.subtitles.size(), television::ServiceTracks::kMost);
    EXPECT_TRUE(Map().read().tracks.audio.empty());
}

}  // namespace
