/**
 * One check for every plain bridge: an interface method whose arguments are those of a middleware
 * function, in order, less the outputs at the function's end. A row is made of the two addresses.
 */
#pragma once

#include <gtest/gtest.h>
#include <hidl/HidlSupport.h>
#include <hidl/Status.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "switchboard.h"

namespace forwarding {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;

/** A number whose bytes are all the same, not zero, with the highest bit set, and different for
 * each index. */
template <typename Number>
Number distinctNumber(int index, int seed) {
    Number number = 0;
    memset(&number, 0x81 + 8 * index + seed, sizeof(number));
    return number;
}

/** What is passed for argument `index`; the middleware will take it as a `Parameter`. */
template <typename Argument, typename Parameter>
Argument distinctArgument(int index, int seed) {
    if constexpr (std::is_same_v<Argument, bool>) {
        return (index + seed) % 2 != 0;
    } else if constexpr (std::is_enum_v<Argument>) {
        return static_cast<Argument>(distinctNumber<std::underlying_type_t<Argument>>(index, seed));
    } else if constexpr (std::is_same_v<Argument, hidl_string>) {
        return hidl_string("text " + std::to_string(10 * seed + index));
    } else if constexpr (std::is_same_v<Argument, hidl_vec<uint8_t>>) {
        hidl_vec<uint8_t> image(sizeof(std::remove_pointer_t<Parameter>));
        for (size_t i = 0; i < image.size(); ++i) {
            image[i] = static_cast<uint8_t>(i * 7 + index * 31 + seed);
        }
        return image;
    } else {
        return distinctNumber<Argument>(index, seed);
    }
}

/** The middleware received `parameter` for `argument`. */
template <typename Argument, typename Parameter>
void expectPassed(const Argument& argument, Parameter parameter) {
    if constexpr (std::is_same_v<Argument, hidl_string>) {
        EXPECT_EQ(parameter, argument.c_str()) << "a text is not copied";
    } else if constexpr (std::is_same_v<Argument, hidl_vec<uint8_t>>) {
        EXPECT_EQ(memcmp(parameter, argument.data(), argument.size()), 0) << "a record image";
    } else {
        EXPECT_EQ(parameter, static_cast<Parameter>(argument));
    }
}

/** What the middleware writes into output `index`. */
template <typename Value>
Value distinctOutput(int index, int seed) {
    Value value;
    memset(&value, 0x11 * (index + 1) + 8 * seed, sizeof(value));
    return value;
}

/** The client received `result` for an output that holds `value`: a record at its full size. */
template <typename Result, typename Value>
void expectAnswered(const Result& result, const Value& value) {
    if constexpr (std::is_same_v<Result, bool> && std::is_integral_v<Value>) {
        EXPECT_EQ(result, value != 0) << "a flag";
    } else if constexpr (std::is_class_v<Value>) {
        ASSERT_EQ(result.size(), sizeof(Value));
        EXPECT_EQ(memcmp(result.data(), &value, sizeof(Value)), 0) << "a record image";
    } else {
        EXPECT_EQ(result, value);
    }
}

template <typename Type>
constexpr bool kIsCallback = false;
template <typename Signature>
constexpr bool kIsCallback<std::function<Signature>> = true;

template <typename Method, typename Function>
class Forwarding;

template <typename Interface, typename Result, typename... Arguments, typename FunctionResult,
          typename... Parameters>
class Forwarding<Result (Interface::*)(Arguments...), FunctionResult (*)(Parameters...)> {
  public:
    using Method = Result (Interface::*)(Arguments...);

    template <auto Function>
    static void check(Interface& implementation, Method method, const char* name) {
        for (const int seed : {0, 1}) {
            for (const bool succeeds : {true, false}) {
                SCOPED_TRACE(succeeds ? "success" : "failure");
                Forwarding call(seed, succeeds);
                switchboard::Switchboard tv;
                tv.on<Function>([&](Parameters... parameters) {
                    call.onMiddleware(AllInputs{}, AllOutputs{}, parameters...);
                    return call.mExpectedResult;
                });
                switchboard::Switchboard::startRecording();
                call.callMethod(AllInputs{}, AllOutputs{}, implementation, method);
                EXPECT_EQ(switchboard::Switchboard::stopRecording(),
                          std::vector<std::string>{name});
            }
        }
    }

    /** The numbers among the arguments that a call with `seed` passes, as "%d" prints them. */
    static std::vector<std::string> numbersOf(int seed) {
        std::vector<std::string> numbers;
        const auto add = [&](const auto& argument) {
            if constexpr (std::is_integral_v<std::decay_t<decltype(argument)>>) {
                numbers.push_back(std::to_string(static_cast<int32_t>(argument)));
            }
        };
        std::apply([&](const auto&... all) { (add(all), ...); }, makeArguments(AllInputs{}, seed));
        return numbers;
    }

  private:
    static constexpr bool kHasCallback = (kIsCallback<std::decay_t<Arguments>> || ...);
    static constexpr size_t kInputs = sizeof...(Arguments) - (kHasCallback ? 1 : 0);
    static constexpr size_t kOutputs = sizeof...(Parameters) - kInputs;
    using AllInputs = std::make_index_sequence<kInputs>;
    using AllOutputs = std::make_index_sequence<kOutputs>;

    using ParameterTypes = std::tuple<Parameters...>;
    template <size_t I>
    using Argument = std::decay_t<std::tuple_element_t<I, std::tuple<Arguments...>>>;
    template <size_t I>
    using Parameter = std::tuple_element_t<I, ParameterTypes>;
    template <size_t O>
    using OutputValue = std::remove_pointer_t<Parameter<kInputs + O>>;

    template <size_t... I>
    static auto makeArguments(std::index_sequence<I...>, [[maybe_unused]] int seed) {
        return std::make_tuple(distinctArgument<Argument<I>, Parameter<I>>(I, seed)...);
    }
    template <size_t... O>
    static auto makeOutputs(std::index_sequence<O...>, [[maybe_unused]] int seed,
                            [[maybe_unused]] bool succeeds) {
        return std::make_tuple(succeeds ? distinctOutput<OutputValue<O>>(O, seed)
                                        : OutputValue<O>{}...);
    }

    /** `code`, in both halves of a result of 64 bits. */
    static FunctionResult expectedResult(int32_t code) {
        const auto result = static_cast<FunctionResult>(code);
        if constexpr (sizeof(FunctionResult) > sizeof(code)) return result * 0x100000001;
        return result;
    }

    Forwarding(int seed, bool succeeds)
        : mSucceeds(succeeds),
          mExpectedResult(expectedResult(succeeds ? 1000 + seed : -1000 - seed)),
          mArguments(makeArguments(AllInputs{}, seed)),
          mOutputs(makeOutputs(AllOutputs{}, seed, succeeds)) {}

    template <size_t... I, size_t... O>
    void onMiddleware(std::index_sequence<I...>, std::index_sequence<O...>,
                      Parameters... parameters) {
        [[maybe_unused]] const ParameterTypes all(parameters...);
        (expectPassed(std::get<I>(mArguments), std::get<I>(all)), ...);
        (expectAnswered(image(*std::get<kInputs + O>(all)), OutputValue<O>{}), ...);
        if (mSucceeds) ((*std::get<kInputs + O>(all) = std::get<O>(mOutputs)), ...);
    }

    /** An output as the middleware finds it, in the shape in which a client would receive it. */
    template <typename Value>
    static auto image(const Value& value) {
        if constexpr (std::is_class_v<Value>) {
            const auto* bytes = reinterpret_cast<const uint8_t*>(&value);
            return std::vector<uint8_t>(bytes, bytes + sizeof(value));
        } else {
            return value;
        }
    }

    template <size_t... I, size_t... O>
    void callMethod(std::index_sequence<I...>, std::index_sequence<O...>, Interface& implementation,
                    Method method) {
        if constexpr (kHasCallback) {
            int answers = 0;
            const auto status = (implementation.*method)(
                    std::get<I>(mArguments)..., [&](const auto&... results) {
                        ++answers;
                        const auto all = std::tie(results...);
                        (expectAnswered(std::get<O>(all), std::get<O>(mOutputs)), ...);
                        EXPECT_EQ(std::get<kOutputs>(all), mExpectedResult);
                    });
            EXPECT_TRUE(status.isOk());
            EXPECT_EQ(answers, 1);
        } else {
            const Result result = (implementation.*method)(std::get<I>(mArguments)...);
            EXPECT_TRUE(result.isOk());
            if constexpr (!std::is_same_v<Result, ::android::hardware::Return<void>>) {
                // Some methods return a narrower number, or whether it is not 0.
                EXPECT_EQ(plain(result), static_cast<decltype(plain(result))>(mExpectedResult));
            }
        }
    }

    template <typename Value>
    static Value plain(const ::android::hardware::Return<Value>& result) {
        return result;
    }

    const bool mSucceeds;
    const FunctionResult mExpectedResult;
    const decltype(makeArguments(AllInputs{}, 0)) mArguments;
    const decltype(makeOutputs(AllOutputs{}, 0, true)) mOutputs;
};

/**
 * Calls `Method` of a new `Implementation` with two sets of distinct arguments, the middleware
 * succeeding and failing: `Function` alone is called, with the same arguments in the same order;
 * what it writes reaches the callback in its order with the result last; a failure leaves the
 * outputs zero, records at their full size.
 */
template <typename Implementation, auto Method, auto Function>
void check(const char* name) {
    const ::android::sp<Implementation> implementation = new Implementation();
    Forwarding<decltype(Method), decltype(Function)>::template check<Function>(*implementation,
                                                                               Method, name);
}

/**
 * The entry lines that `check` has a method write, one for each call: `format`, where "%s" stands
 * for the method's name and each "%d" for the next number among its arguments. None where `format`
 * is empty.
 */
template <auto Method, auto Function>
std::vector<std::string> entryLines(const std::string& format, const std::string& method) {
    std::vector<std::string> lines;
    if (format.empty()) return lines;
    for (const int seed : {0, 1}) {
        const auto numbers = Forwarding<decltype(Method), decltype(Function)>::numbersOf(seed);
        std::string line;
        auto number = numbers.begin();
        for (size_t i = 0; i < format.size(); ++i) {
            if (format.compare(i, 2, "%s") == 0) {
                line += method;
                ++i;
            } else if (format.compare(i, 2, "%d") == 0) {
                line += number == numbers.end() ? "(no such argument)" : *number++;
                ++i;
            } else {
                line += format[i];
            }
        }
        lines.insert(lines.end(), 2, line);  // the middleware succeeds, and fails
    }
    return lines;
}

}  // namespace forwarding
