/** The television's settings: reading and changing them under their keys, and hearing of changes.
 */
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiConfig.h>

#include "qortv/connect.h"
#include "qortv/listener.h"

namespace qortv {

/** A number, a switch's 0 or 1 and a choice's place among them; or a text (UTF-8). */
using ConfigurationValue = std::variant<int32_t, std::string>;

/** All that there is to know of a setting. */
struct ConfigurationItem {
    std::string key;
    ConfigurationValue value;
    // The next three are for numbers.
    int32_t least = 0;
    int32_t greatest = 0;
    /** Names of the values from `least` on, for switches and choices; empty for others. */
    std::vector<std::string> choices;
    bool visible = true;  ///< a menu shows it
    bool enabled = true;  ///< a menu lets the viewer change it; programs may in any case

    bool isText() const { return std::holds_alternative<std::string>(value); }
    /** The value as a text: a choice by its name where that is known. */
    std::string text() const;
    /** What the value can be, for people: "0 to 100", "off, on", "text". */
    std::string canBe() const;
};

/**
 * The settings. docs/configuration.md tells what they mean.
 *
 *     qortv::Configuration configuration(qortv::connect<qortv::Configuration::Interface>());
 *     configuration.set("picture.brightness", 60);
 *
 * Methods may be called by several threads at once. All throw Error kLost and kTransport, and
 * kRefused when the television answers with a negative code, as it does for an unknown key.
 */
class Configuration {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiConfig;

    /** @param proxy the interface, from connect<Configuration::Interface>() */
    explicit Configuration(android::sp<Interface> proxy);

    /** The keys that this library knows; a television may have more. */
    static const std::vector<std::string>& keys();

    ConfigurationValue get(const std::string& key);

    /** Everything about a setting, in several calls. */
    ConfigurationItem item(const std::string& key);

    /** @throws Error kRefused also for a value out of range, and for a text: the message names what
     * is at fault */
    void set(const std::string& key, int32_t value);

    /** The same for texts; an empty one stands for the text that was delivered. */
    void set(const std::string& key, const std::string& value);

    /**
     * Sets what a person typed: a number, the name of a choice, or the text.
     *
     * @throws Error also kArgument when it is nothing that the setting can be
     */
    void setText(const std::string& key, const std::string& text);

  private:
    friend class ConfigurationWatch;

    android::sp<Interface> mProxy;
};

/**
 * While it lives, the television reports changes of settings to listeners: of no other is anything
 * heard. Registrations are counted, so watches of several programs do not disturb each other.
 */
class ConfigurationWatch {
  public:
    /** @throws Error as the methods of Configuration do; then nothing is registered */
    ConfigurationWatch(const Configuration& configuration, std::vector<std::string> keys);
    /** Takes the registrations back, unless the service is gone and they with it. */
    ~ConfigurationWatch();
    ConfigurationWatch(const ConfigurationWatch&) = delete;
    ConfigurationWatch& operator=(const ConfigurationWatch&) = delete;

  private:
    void removeAll();

    const android::sp<Configuration::Interface> mProxy;
    std::vector<std::string> mKeys;  ///< those that are registered
};

/** A setting has become another. */
struct ConfigurationChange {
    std::string key;
    /** The new number; of a text 0, and get() tells it. */
    int32_t value = 0;
    uint32_t flag = 0;  ///< what was passed along by who changed it
};

/**
 * A listener that hears of changes. Changes of other keys, and notifications of everything else,
 * reach onNotification() as for any listener. To be heard, a change needs a ConfigurationWatch too,
 * of this program or another one.
 */
class ConfigurationListener : public Listener {
  public:
    /** @param keys those whose changes it wants to hear of */
    explicit ConfigurationListener(const std::vector<std::string>& keys = Configuration::keys());

    /** On a thread of the runtime, as the methods of Listener are: return soon. */
    virtual void onConfigurationChange(const ConfigurationChange& change) = 0;

    void notifyConfig(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                      uint64_t arg4) override;

  private:
    std::map<uint32_t, std::string> mKeys;  ///< by the checksum that a notification tells
};

}  // namespace qortv
