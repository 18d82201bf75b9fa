/** The settings of the television: reads and changes them, and reports changes. */
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

/** A number or a text (UTF-8). The number of a switch is 0 or 1, that of a choice counts from
 * ConfigurationItem::least on. */
using ConfigurationValue = std::variant<int32_t, std::string>;

/** A setting with its value and its possible values. */
struct ConfigurationItem {
    std::string key;
    ConfigurationValue value;
    int32_t least = 0;     ///< minimum of a number
    int32_t greatest = 0;  ///< maximum of a number
    /** Names of the values from `least` on, for switches and choices; otherwise empty. */
    std::vector<std::string> choices;
    bool visible = true;  ///< menus show it
    bool enabled = true;  ///< menus let the viewer change it; programs can change it in any case

    bool isText() const { return std::holds_alternative<std::string>(value); }
    /** Returns the value as a text: the name of a choice if it has one, otherwise the number. */
    std::string text() const;
    /** Returns the possible values for messages, such as "0 to 100", "off, on" or "text". */
    std::string canBe() const;
};

/**
 * The settings. docs/configuration.md explains them.
 *
 *     qortv::Configuration configuration(qortv::connect<qortv::Configuration::Interface>());
 *     configuration.set("picture.brightness", 60);
 *
 * Methods may be called by several threads at once. All throw Error kLost, kTransport and kRefused,
 * the latter for example for an unknown key.
 */
class Configuration {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiConfig;

    /** @param proxy the interface, from connect<Configuration::Interface>() */
    explicit Configuration(android::sp<Interface> proxy);

    /** Returns the keys that this library knows, in the order of docs/configuration.md. A
     * television may have more. */
    static const std::vector<std::string>& keys();

    ConfigurationValue get(const std::string& key);

    /** Reads a setting in several calls. */
    ConfigurationItem item(const std::string& key);

    /** @throws Error kRefused also for a value out of range and for a setting that is a text; the
     * message says so */
    void set(const std::string& key, int32_t value);

    /** Sets a text. An empty one restores the text that the television was delivered with. */
    void set(const std::string& key, const std::string& value);

    /**
     * Sets a value that a user entered: a number, the name of a choice, or a text.
     *
     * @throws Error also kArgument for a text that is neither a number nor the name of a choice,
     *     when the setting is not a text
     */
    void setText(const std::string& key, const std::string& text);

  private:
    friend class ConfigurationWatch;

    android::sp<Interface> mProxy;
};

/**
 * As long as it exists, the television notifies all listeners when one of its settings changes. The
 * television reports only settings that some program watches. It counts the watches of a setting,
 * so several programs can watch the same one.
 */
class ConfigurationWatch {
  public:
    /** @throws Error like the methods of Configuration; nothing is registered then */
    ConfigurationWatch(const Configuration& configuration, std::vector<std::string> keys);
    /** Removes the registrations. */
    ~ConfigurationWatch();
    ConfigurationWatch(const ConfigurationWatch&) = delete;
    ConfigurationWatch& operator=(const ConfigurationWatch&) = delete;

  private:
    void removeAll();

    const android::sp<Configuration::Interface> mProxy;
    std::vector<std::string> mKeys;  ///< of the settings that are registered
};

/** A setting has changed. */
struct ConfigurationChange {
    std::string key;
    int32_t value = 0;  ///< the new number; 0 for a text, which Configuration::get() returns
    uint32_t flag = 0;  ///< the update flag that was passed to the call that changed the setting
};

/**
 * A listener that receives changes of settings. Changes of settings whose keys it was not made for,
 * and all other notifications, reach onNotification() as for any listener. The television only
 * reports settings for which this or another program has a ConfigurationWatch.
 */
class ConfigurationListener : public Listener {
  public:
    /** @param keys of the settings whose changes are received */
    explicit ConfigurationListener(const std::vector<std::string>& keys = Configuration::keys());

    /** Called on a thread of the runtime, like the methods of Listener: must return soon. */
    virtual void onConfigurationChange(const ConfigurationChange& change) = 0;

    void notifyConfig(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                      uint64_t arg4) override;

  private:
    std::map<uint32_t, std::string> mKeys;  ///< by the checksum that notifications contain
};

}  // namespace qortv
