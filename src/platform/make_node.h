#pragma once

#include "view_content.h"

#include <memory>
#include <type_traits>
#include <variant>

namespace velmo {

/// Says which class of a platform shows a kind of content.
template <typename ShownContent, typename ShowingNode>
struct Shows {
    using Content = ShownContent;
    using Node = ShowingNode;
};

/// A node for the content, made for that surface. `Kinds` are the kinds of content in their order.
template <typename Base, typename... Kinds, typename Surface>
std::unique_ptr<Base> makeNode(const ViewContent& content, Surface& surface) {
    static_assert(std::is_same_v<ViewContent, std::variant<typename Kinds::Content...>>);
    std::unique_ptr<Base> made;
    const auto makeIfShownBy = [&]<typename Content, typename Node>(Shows<Content, Node> /*kind*/) {
        if (std::holds_alternative<Content>(content))
            made = std::make_unique<Node>(surface);
    };
    (makeIfShownBy(Kinds()), ...);
    return made;
}

}  // namespace velmo
