/**
 * The check for plain bridges. A plain bridge is an interface method with the arguments of one
 * middleware function, in the same order; what the function takes behind them are its outputs.
 *
 * There are some four hundred of them. So the templates here only describe a bridge, by tables of
 * types and by functions that pass values on, and most of that is made once for all methods with
 * the same types. The check itself is compiled once, in forwarding.cpp.
 */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/forwarding_types.h"
#include "television/switchboard/switchboard.h"

namespace forwarding {

using ::android::hardware::Return;

/** An argument that a method is called with; its type tells which member is used. */
struct Argument {
    uint64_t number = 0;  // widened with its sign
    hidl_string text;
    hidl_vec<uint8_t> bytes;

    template <typename T>
    decltype(auto) as() const {
        if constexpr (std::is_same_v<T, hidl_string>) {
            return (text);
        } else if constexpr (std::is_same_v<T, hidl_vec<uint8_t>>) {
            return (bytes);
        } else {
            return static_cast<T>(number);
        }
    }
};

class Call;

/** The types of a method. */
struct MethodTypes {
    Types arguments;  // less the result callback
    bool has_callback;
};

/** The types of a middleware function. */
struct FunctionTypes {
    Types parameters;
    Type result;
};

/** A method of an implementation and the middleware function that it is to call. */
struct Bridge {
    const char* function;  // its name
    const MethodTypes* method_types;
    const FunctionTypes* function_types;
    /** Calls the method; `implementation` is the address of an object of the method's class. */
    void (*call_method)(void* implementation, const Argument* arguments, Call& call);
    /** Has every call of the function received by `call`, for as long as `board` lives. */
    void (*plug)(switchboard::Switchboard& board, Call& call);
};

/** One call of a bridge, and the check of all that passes through it. */
class Call {
  public:
    /** The middleware is to return `result`; it writes its outputs where it `succeeds`. */
    Call(const Bridge& bridge, void* implementation, int seed, bool succeeds, int32_t result);

    /** Makes the call. */
    void check();

    // Called by the templates below. Values are passed by their addresses, in order.

    /** The middleware function was called; the result that it is to return. */
    int64_t onFunction(const void* const* parameters);
    /** The method called its result callback. */
    void onAnswer(Types types, const void* const* results);
    /** The method returned. */
    void onReturn(bool is_ok, Type type = {}, const void* value = nullptr);

  private:
    void expectPassed(size_t index, const void* parameter) const;
    void expectAnswered(size_t output, Type type, const void* result) const;
    size_t inputCount() const { return mBridge.method_types->arguments.count; }
    size_t outputCount() const { return mBridge.function_types->parameters.count - inputCount(); }
    const Type& outputType(size_t output) const {
        return mBridge.function_types->parameters[inputCount() + output];
    }

    const Bridge& mBridge;
    void* const mImplementation;
    const bool mSucceeds;
    const int64_t mResult;
    std::vector<Argument> mArguments;
    std::vector<std::vector<uint8_t>> mOutputs;  // what the middleware writes, and the client gets
    int mFunctionCalls = 0;
    int mAnswers = 0;
};

template <typename Function>
struct FunctionOf;

template <typename Result, typename... Parameters>
struct FunctionOf<Result (*)(Parameters...)> {
    /** A handler of the function's slot. */
    struct Handler {
        Call* call;

        Result operator()(Parameters... parameters) const {
            const void* const addresses[] = {&parameters..., nullptr};
            return static_cast<Result>(call->onFunction(addresses));
        }
    };

    static constexpr FunctionTypes kFunction{typesOf<Parameters...>(), typeOf<Result>()};
};

/** The result callback that a method of that callback type is called with. */
template <typename Callback>
struct Receiver;

template <typename... Results>
struct Receiver<std::function<void(Results...)>> {
    Call* call;

    void operator()(Results... results) const {
        const void* const addresses[] = {&results...};
        call->onAnswer(typesOf<std::decay_t<Results>...>(), addresses);
    }
};

template <typename Method>
struct MethodOf;

template <typename Implementation, typename Result, typename... Arguments>
struct MethodOf<Return<Result> (Implementation::*)(Arguments...)> {
    using Method = Return<Result> (Implementation::*)(Arguments...);

    template <size_t I>
    using ArgumentAt = std::tuple_element_t<I, std::tuple<std::decay_t<Arguments>...>>;

    static constexpr bool kHasCallback = (kIsCallback<std::decay_t<Arguments>> || ...);
    static constexpr size_t kInputs = sizeof...(Arguments) - (kHasCallback ? 1 : 0);
    static constexpr MethodTypes kMethod{{typesOf<std::decay_t<Arguments>...>().first, kInputs},
                                         kHasCallback};

    template <size_t... I>
    static void call(std::index_sequence<I...>, Implementation& implementation, Method method,
                     [[maybe_unused]] const Argument* arguments, Call& call) {
        if constexpr (kHasCallback) {
            const Return<Result> returned =
                    (implementation.*method)(arguments[I].template as<ArgumentAt<I>>()...,
                                             Receiver<ArgumentAt<kInputs>>{&call});
            call.onReturn(returned.isOk());
        } else {
            const Return<Result> returned =
                    (implementation.*method)(arguments[I].template as<ArgumentAt<I>>()...);
            if constexpr (std::is_void_v<Result>) {
                call.onReturn(returned.isOk());
            } else {
                const Result value = returned;
                call.onReturn(returned.isOk(), typeOf<Result>(), &value);
            }
        }
    }
};

template <auto Method, typename Implementation>
void callMethod(void* implementation, const Argument* arguments, Call& call) {
    using Of = MethodOf<decltype(Method)>;
    Of::call(std::make_index_sequence<Of::kInputs>{}, *static_cast<Implementation*>(implementation),
             Method, arguments, call);
}

template <auto Function>
void plug(switchboard::Switchboard& board, Call& call) {
    board.on<Function>(typename FunctionOf<decltype(Function)>::Handler{&call});
}

/** The bridge from `Method` of `Implementation` to `Function`, which is called `name`. */
template <typename Implementation, auto Method, auto Function>
constexpr Bridge bridge(const char* name) {
    return {name, &MethodOf<decltype(Method)>::kMethod, &FunctionOf<decltype(Function)>::kFunction,
            &callMethod<Method, Implementation>, &plug<Function>};
}

/** How often `check` calls a method. */
constexpr int kCalls = 8;

/**
 * Calls the method of `implementation`, an object of the bridge's class, with two sets of distinct
 * arguments, the middleware succeeding and failing, with results that fit into 16 bits and results
 * that do not. The bridge's function alone is called, with the same arguments in the same order;
 * what it writes reaches the callback in its order with the result last; a failure leaves the
 * outputs zero, records at their full size.
 */
void check(const Bridge& bridge, void* implementation);

/** The same of a new implementation. */
template <typename Implementation>
void checkNew(const Bridge& bridge) {
    const ::android::sp<Implementation> implementation = new Implementation();
    check(bridge, implementation.get());
}

/**
 * The entry lines that `check` has a method write, one for each call: `format`, where "%s" stands
 * for `method` and each "%d" for the next number among its arguments. None where `format` is empty.
 */
std::vector<std::string> entryLines(const Bridge& bridge, const std::string& format,
                                    const std::string& method);

}  // namespace forwarding
