#pragma once

#include "contract.h"
#include "encoding.h"
#include "type_text.h"

#include <string>
#include <type_traits>

namespace velmo::macos {

template <typename Member>
struct MemberTraits;
template <typename Owner, typename R, typename... Arguments>
struct MemberTraits<R (Owner::*)(Arguments...)> {
    using Result = R;

    template <auto member>
    static Raw<R> call(Owner* owner, Raw<Arguments>... arguments) {
        if constexpr (std::is_void_v<R>) {
            if (owner != nullptr)
                (owner->*member)(fromRaw<Arguments>(arguments)...);
        } else {
            if (owner == nullptr)
                return Raw<R>();
            return toReturned((owner->*member)(fromRaw<Arguments>(arguments)...));
        }
    }

    static std::string encoding() { return methodEncoding<R, Arguments...>(); }
    static std::string typesText() { return typeTexts<R, Arguments...>(); }
    static constexpr std::size_t argumentCount = sizeof...(Arguments);
};

/// A method of a class that is made here, and the member function that it calls. `declaredBy` names the class
/// or the protocol of the system that asks for it; empty for messages of our own.
template <FixedString selectorName, auto memberFunction, FixedString declaredBy = "">
struct Method {
    using Traits = MemberTraits<decltype(memberFunction)>;

    static constexpr auto selector = selectorName;
    static constexpr auto member = memberFunction;
    static_assert(argumentCount(selectorName.view()) == Traits::argumentCount, "one argument for each colon");

    static std::string text() {
        return "method " + std::string(declaredBy.view()) + " - " + std::string(selectorName.view()) + ' ' +
               Traits::typesText();
    }
    static constexpr bool isListed = !declaredBy.isEmpty();
};

/// A class of the Objective-C runtime whose methods are member functions of `Owner`. Each of its objects
/// refers to one `Owner`, or to none once that has gone: then it does nothing and gives zero.
template <typename Owner, FixedString name, typename Base, typename... Methods>
class Subclass {
public:
    /// Made at the first call.
    static RawClass rawClass() {
        static const RawClass made = make();
        return made;
    }

    static void setOwner(Id object, Owner* owner) { ownerOf(object) = owner; }

private:
    static Owner*& ownerOf(Id object) {
        static const std::ptrdiff_t offset = ivar_getOffset(class_getInstanceVariable(rawClass(), "owner"));
        return *reinterpret_cast<Owner**>(reinterpret_cast<char*>(object) + offset);
    }

    static RawClass make() {
        const RawClass made = objc_allocateClassPair(classNamed<Base::className>(), name.text(), 0);
        class_addIvar(made, "owner", sizeof(Owner*), 3, "^v");
        (add<Methods>(made, Methods::member), ...);
        objc_registerClassPair(made);
        return made;
    }

    template <typename Added, typename Result, typename... Arguments>
    static void add(RawClass made, Result (Owner::*)(Arguments...)) {
        if constexpr (Added::isListed)
            contract::use<Added>();
        using Thunk = Raw<Result> (*)(Id, Selector, Raw<Arguments>...);
        const Thunk thunk = [](Id self, Selector, Raw<Arguments>... arguments) {
            return Added::Traits::template call<Added::member>(ownerOf(self), arguments...);
        };
        class_addMethod(made, selectorNamed<Added::selector>(), reinterpret_cast<Implementation>(thunk),
                        Added::Traits::encoding().c_str());
    }
};

}  // namespace velmo::macos
