// Closed captions of ISDB, ATSC and analogue broadcasts: whether they are on, and the chosen
// stream.
#include <memory>
#include <mutex>

#include "middleware/cc.h"
#include "middleware/result_codes.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** The captions of one kind of broadcast. Whether they are on is remembered over restarts; the
 * stream is then the first one again. Any thread. */
class Captions {
  public:
    Captions(Core& core, const char* name, int32_t streams)
        : mCore(core), mName(name), mStreams(streams) {}

    int32_t enable(bool on) {
        mCore.rememberNumber(mName, on ? 1 : 0);
        return TV_OK;
    }
    /** Goes on to the next stream. TV_BUSY while the captions are off. */
    int32_t next() {
        if (!on()) return TV_BUSY;
        std::lock_guard<std::mutex> lock(mMutex);
        mStream = mStream % mStreams + 1;
        return TV_OK;
    }
    /** The chosen stream, from 1; 0 while the captions are off. */
    int32_t stream() {
        if (!on()) return 0;
        std::lock_guard<std::mutex> lock(mMutex);
        return mStream;
    }

  private:
    bool on() const { return mCore.rememberedNumber(mName, 0) != 0; }

    Core& mCore;
    const std::string mName;
    const int32_t mStreams;
    std::mutex mMutex;
    int32_t mStream = 1;  // guarded by mMutex
};

}  // namespace

void plugClosedCaptions(switchboard::Switchboard& board, Core& core) {
    const auto isdb = std::make_shared<Captions>(core, "captions.isdb", ISDBCC_STREAM_COUNT);
    board.on<&a_qortvapi_isdbcc_enable>([=](bool on) { return isdb->enable(on); });
    board.on<&a_qortvapi_isdbcc_next_stream>([=] { return isdb->next(); });
    board.on<&a_qortvapi_isdbcc_get_CCString>([=] { return isdb->stream(); });
    // Captions are visible whenever they are on, so both functions set the same.
    const auto atsc = std::make_shared<Captions>(core, "captions.atsc", ATSCCC_STREAM_COUNT);
    board.on<&a_qortvapi_atsccc_enable>([=](bool on) { return atsc->enable(on); });
    board.on<&a_qortvapi_atsccc_set_visible>([=](bool on) { return atsc->enable(on); });
    board.on<&a_qortvapi_atsccc_next_stream>([=] { return atsc->next(); });
    board.on<&a_qortvapi_atsccc_get_CCString>([=] { return atsc->stream(); });
    board.on<&a_qortvapi_atsccc_demo_set>(
            [](int32_t, int32_t) { return int32_t{TV_NOT_SUPPORTED}; });
    const auto analogue =
            std::make_shared<Captions>(core, "captions.analogue", ANALOGCC_STREAM_COUNT);
    board.on<&a_qortvapi_analogcc_enable>([=](bool on) { return analogue->enable(on); });
    board.on<&a_qortvapi_analogcc_set_visible>([=](bool on) { return analogue->enable(on); });
    board.on<&a_qortvapi_analogcc_next_stream>([=] { return analogue->next(); });
    board.on<&a_qortvapi_analogcc_get_CCString>([=] { return analogue->stream(); });
}

}  // namespace television
