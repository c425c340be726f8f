#pragma once

#include "encoding.h"
#include "type_text.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace velmo::macos {

extern "C" {
void* _Block_copy(const void* block);
void _Block_release(const void* block);
extern void* _NSConcreteStackBlock[32];
}

template <typename Signature>
class Block;

/// What functions that take a block are given; it is never looked into.
template <typename Signature>
struct BlockCode;

/// A function in the form in which the system takes one. It lives until the last who has it lets go of it.
template <typename Result, typename... Arguments>
class Block<Result(Arguments...)> {
public:
    static constexpr const char* encoding = "@?";

    using Function = std::function<Result(Arguments...)>;

    /// None, where the function is empty.
    explicit Block(Function function) {
        if (!function)
            return;
        const auto shared = std::make_shared<const Function>(std::move(function));
        Literal literal;
        literal.function = &shared;
        literal_ = _Block_copy(&literal);
    }
    Block(const Block& other) : literal_(other.literal_ == nullptr ? nullptr : _Block_copy(other.literal_)) {}
    Block(Block&& other) noexcept : literal_(std::exchange(other.literal_, nullptr)) {}
    Block& operator=(Block other) noexcept {
        std::swap(literal_, other.literal_);
        return *this;
    }
    ~Block() {
        if (literal_ != nullptr)
            _Block_release(literal_);
    }

    void* get() const { return literal_; }
    BlockCode<Result(Arguments...)>* code() const {
        return static_cast<BlockCode<Result(Arguments...)>*>(literal_);
    }

private:
    struct Literal;

    struct Descriptor {
        unsigned long reserved = 0;
        unsigned long size = sizeof(Literal);
        void (*copy)(void* to, const void* from) = &copyFunction;
        void (*dispose)(const void* block) = &disposeFunction;
        const char* signature = encodedSignature();
    };

    /// What compilers make of a block; the layout is part of the system's binary interface.
    struct Literal {
        static constexpr int hasCopyAndDispose = 1 << 25;
        static constexpr int hasSignature = 1 << 30;

        void* kind = _NSConcreteStackBlock;
        int flags = hasCopyAndDispose | hasSignature;
        int reserved = 0;
        Raw<Result> (*invoke)(Literal*, Raw<Arguments>...) = &call;
        const Descriptor* descriptor = &sharedDescriptor();
        const std::shared_ptr<const Function>* function = nullptr;
    };

    static const Descriptor& sharedDescriptor() {
        static const Descriptor descriptor;
        return descriptor;
    }

    static const char* encodedSignature() {
        static const std::string text =
            ((encodingOf<Result>() + "@?") + ... + encodingOf<std::remove_cvref_t<Arguments>>());
        return text.c_str();
    }

    static Raw<Result> call(Literal* literal, Raw<Arguments>... arguments) {
        // Held here, because the function may let go of its block.
        const std::shared_ptr<const Function> function = *literal->function;
        if constexpr (std::is_void_v<Result>)
            (*function)(fromRaw<Arguments>(arguments)...);
        else
            return toReturned((*function)(fromRaw<Arguments>(arguments)...));
    }

    static void copyFunction(void* to, const void* from) {
        static_cast<Literal*>(to)->function =
            new std::shared_ptr<const Function>(*static_cast<const Literal*>(from)->function);
    }

    static void disposeFunction(const void* block) { delete static_cast<const Literal*>(block)->function; }

    void* literal_ = nullptr;
};

template <typename Signature>
struct RawType<Block<Signature>> {
    using Type = void*;
    static Type toRaw(const Block<Signature>& block) { return block.get(); }
};

template <typename Result, typename... Arguments>
struct TypeText<Block<Result(Arguments...)>> {
    static std::string text() { return "block(" + typeTexts<Result, Arguments...>() + ")"; }
};

template <typename Result, typename... Arguments>
struct TypeText<BlockCode<Result(Arguments...)>*> {
    static std::string text() { return typeText<Block<Result(Arguments...)>>(); }
};

}  // namespace velmo::macos
