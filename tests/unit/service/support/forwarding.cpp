#include "support/forwarding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace forwarding {

namespace {

/** The low `size` bytes of `number`, widened with their sign if they have one. */
uint64_t widened(uint64_t number, size_t size, bool is_signed) {
    if (size >= sizeof(number)) return number;
    const uint64_t sign = uint64_t{1} << (8 * size - 1);
    const uint64_t low = number & (2 * sign - 1);
    return is_signed ? (low ^ sign) - sign : low;
}

/** The number at `address`, widened with its sign. Little-endian, as every machine that this is
 * built for. */
uint64_t numberAt(const void* address, const Type& type) {
    uint64_t number = 0;
    memcpy(&number, address, type.size);
    return widened(number, type.size, type.is_signed);
}

/** `number` as static_cast converts it to `type`. */
uint64_t converted(uint64_t number, const Type& type) {
    if (type.kind == Type::kFlag) return number != 0 ? 1 : 0;
    return widened(number, type.size, type.is_signed);
}

/** Both numbers as the language compares them: after the integral promotions, and as unsigned
 * where one of them is. */
void expectEqualNumbers(const void* address, const Type& type, const void* expected,
                        const Type& expected_type) {
    const size_t size = std::max({sizeof(int), size_t{type.size}, size_t{expected_type.size}});
    EXPECT_EQ(widened(numberAt(address, type), size, true),
              widened(numberAt(expected, expected_type), size, true));
}

bool isNumber(const Type& type) {
    return !type.is_pointer && (type.kind == Type::kFlag || type.kind == Type::kNumber ||
                                type.kind == Type::kEnumeration);
}

/** What is passed for the argument `index`, which the middleware takes as `parameter`. A number's
 * bytes are all the same, not zero, with the highest bit set, and different for each index. */
Argument distinctArgument(int index, int seed, const Type& type, const Type& parameter) {
    Argument argument;
    if (type.kind == Type::kFlag) {
        argument.number = (index + seed) % 2;
    } else if (type.kind == Type::kText) {
        argument.text = "text " + std::to_string(10 * seed + index);
    } else if (type.kind == Type::kBytes) {
        argument.bytes.resize(parameter.size);
        for (size_t i = 0; i < parameter.size; ++i) {
            argument.bytes[i] = static_cast<uint8_t>(i * 7 + index * 31 + seed);
        }
    } else {
        memset(&argument.number, 0x81 + 8 * index + seed, sizeof(argument.number));
        argument.number = widened(argument.number, type.size, type.is_signed);
    }
    return argument;
}

/** `code`, in both halves of a result of 64 bits. */
int64_t resultOf(int32_t code, const Type& type) {
    return type.size > sizeof(code) ? code * int64_t{0x100000001} : code;
}

/** The numbers and flags among the arguments that a call with `seed` passes, as "%d" prints them.
 */
std::vector<std::string> numbersOf(const Bridge& bridge, int seed) {
    const Types& types = bridge.method_types->arguments;
    std::vector<std::string> numbers;
    for (size_t i = 0; i < types.count; ++i) {
        if (types[i].kind != Type::kFlag && types[i].kind != Type::kNumber) continue;
        const Argument argument = distinctArgument(static_cast<int>(i), seed, types[i], {});
        numbers.push_back(std::to_string(static_cast<int32_t>(argument.number)));
    }
    return numbers;
}

/** `format` with `method` in the place of each "%s" and the next of `numbers` in that of each "%d".
 */
std::string filledIn(const std::string& format, const std::string& method,
                     const std::vector<std::string>& numbers) {
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
    return line;
}

}  // namespace

Call::Call(const Bridge& bridge, void* implementation, int seed, bool succeeds, int32_t result)
    : mBridge(bridge),
      mImplementation(implementation),
      mSucceeds(succeeds),
      mResult(resultOf(result, bridge.function_types->result)) {
    const Types& parameters = bridge.function_types->parameters;
    for (size_t i = 0; i < inputCount(); ++i) {
        mArguments.push_back(distinctArgument(static_cast<int>(i), seed,
                                              bridge.method_types->arguments[i], parameters[i]));
    }
    for (size_t i = 0; i < outputCount(); ++i) {
        const int filling = succeeds ? 0x11 * (static_cast<int>(i) + 1) + 8 * seed : 0;
        mOutputs.emplace_back(outputType(i).size, static_cast<uint8_t>(filling));
    }
}

void Call::check() {
    switchboard::Switchboard board;
    mBridge.plug(board, *this);
    switchboard::Switchboard::startRecording();
    mBridge.call_method(mImplementation, mArguments.data(), *this);
    EXPECT_EQ(switchboard::Switchboard::stopRecording(),
              std::vector<std::string>{mBridge.function});
    EXPECT_EQ(mFunctionCalls, 1);
    EXPECT_EQ(mAnswers, mBridge.method_types->has_callback ? 1 : 0);
}

int64_t Call::onFunction(const void* const* parameters) {
    ++mFunctionCalls;
    for (size_t i = 0; i < inputCount(); ++i) expectPassed(i, parameters[i]);
    for (size_t i = 0; i < outputCount(); ++i) {
        uint8_t* output = nullptr;
        memcpy(&output, parameters[inputCount() + i], sizeof(output));
        const std::vector<uint8_t>& written = mOutputs[i];
        EXPECT_EQ(std::vector<uint8_t>(output, output + written.size()),
                  std::vector<uint8_t>(written.size()))
                << "output " << i << " before it is written";
        if (mSucceeds) memcpy(output, written.data(), written.size());
    }
    return mResult;
}

void Call::expectPassed(size_t index, const void* parameter) const {
    SCOPED_TRACE("argument " + std::to_string(index));
    const Argument& argument = mArguments[index];
    const Type& parameter_type = mBridge.function_types->parameters[index];
    const Type::Kind kind = mBridge.method_types->arguments[index].kind;
    if (kind != Type::kText && kind != Type::kBytes) {
        ASSERT_TRUE(isNumber(parameter_type));
        EXPECT_EQ(numberAt(parameter, parameter_type), converted(argument.number, parameter_type));
        return;
    }
    ASSERT_TRUE(parameter_type.is_pointer);
    const void* passed = nullptr;
    memcpy(&passed, parameter, sizeof(passed));
    if (kind == Type::kText) {
        EXPECT_EQ(passed, argument.text.c_str()) << "a text is not copied";
    } else {
        ASSERT_NE(passed, nullptr);
        EXPECT_EQ(memcmp(passed, argument.bytes.data(), argument.bytes.size()), 0)
                << "a record image";
    }
}

void Call::onAnswer(Types types, const void* const* results) {
    ++mAnswers;
    ASSERT_EQ(types.count, outputCount() + 1);
    for (size_t i = 0; i < outputCount(); ++i) expectAnswered(i, types[i], results[i]);
    ASSERT_TRUE(isNumber(types[outputCount()]));
    expectEqualNumbers(results[outputCount()], types[outputCount()], &mResult,
                       mBridge.function_types->result);
}

void Call::expectAnswered(size_t output, Type type, const void* result) const {
    SCOPED_TRACE("output " + std::to_string(output));
    Type value_type = outputType(output);
    ASSERT_TRUE(value_type.is_pointer);
    value_type.is_pointer = false;
    const std::vector<uint8_t>& value = mOutputs[output];
    if (value_type.kind == Type::kRecord) {
        ASSERT_EQ(type.kind, Type::kBytes);
        const auto& bytes = *static_cast<const hidl_vec<uint8_t>*>(result);
        EXPECT_EQ(std::vector<uint8_t>(bytes), value) << "a record image";
        return;
    }
    ASSERT_TRUE(isNumber(type) && isNumber(value_type));
    if (type.kind == Type::kFlag) {
        EXPECT_EQ(numberAt(result, type), converted(numberAt(value.data(), value_type), type))
                << "a flag";
    } else {
        expectEqualNumbers(result, type, value.data(), value_type);
    }
}

void Call::onReturn(bool is_ok, Type type, const void* value) {
    EXPECT_TRUE(is_ok);
    // Some methods return a narrower number, or whether it is not 0.
    if (value != nullptr) {
        EXPECT_EQ(numberAt(value, type), converted(static_cast<uint64_t>(mResult), type));
    }
}

void check(const Bridge& bridge, void* implementation) {
    ASSERT_GE(bridge.function_types->parameters.count, bridge.method_types->arguments.count);
    for (const int seed : {0, 1}) {
        // The second code does not fit into 16 bits; its low 16 bits are all 1, and then all 0.
        for (const int32_t code : {1000 + seed, 0x1ffff + seed}) {
            for (const bool succeeds : {true, false}) {
                SCOPED_TRACE(succeeds ? "success" : "failure");
                Call(bridge, implementation, seed, succeeds, succeeds ? code : -code).check();
            }
        }
    }
}

std::vector<std::string> entryLines(const Bridge& bridge, const std::string& format,
                                    const std::string& method) {
    std::vector<std::string> lines;
    if (format.empty()) return lines;
    for (const int seed : {0, 1}) {
        lines.insert(lines.end(), kCalls / 2, filledIn(format, method, numbersOf(bridge, seed)));
    }
    return lines;
}

}  // namespace forwarding
