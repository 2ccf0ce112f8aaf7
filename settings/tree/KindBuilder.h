#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/views/UIView.h"
#include "settings/tree/ActionArguments.h"
#include "settings/tree/NodeKind.h"
#include "settings/tree/NodeTarget.h"
#include "settings/tree/NodeWriter.h"

namespace settings {

namespace kinds {

template <class V>
inline constexpr bool isOptional = false;
template <class V>
inline constexpr bool isOptional<std::optional<V>> = true;

// A getter is a member function, or a function of the subject, or of the writer and the subject.
template <class G, class T>
decltype(auto) read(const G& getter, NodeWriter& writer, T& subject) {
  if constexpr (std::is_invocable_v<G, NodeWriter&, T&>) {
    return std::invoke(getter, writer, subject);
  } else {
    return std::invoke(getter, subject);
  }
}
template <class G, class T>
using Result = std::remove_cvref_t<decltype(read(std::declval<const G&>(),
                                                 std::declval<NodeWriter&>(), std::declval<T&>()))>;

template <class V>
constexpr MemberForm formOf() {
  if constexpr (isOptional<V>) return formOf<typename V::value_type>();
  if constexpr (std::is_same_v<V, bool>) return MemberForm::flag;
  if constexpr (std::is_integral_v<V>) return MemberForm::whole;
  if constexpr (std::is_floating_point_v<V>) return MemberForm::number;
  if constexpr (std::is_same_v<V, std::vector<std::string>>) return MemberForm::texts;
  if constexpr (std::is_same_v<V, std::shared_ptr<platform::UIColor>>) return MemberForm::color;
  if constexpr (std::is_same_v<V, std::shared_ptr<platform::UIImage>>) return MemberForm::image;
  return MemberForm::text;
}

// An absent text is shown as an empty one.
template <class V>
nlohmann::json shown(NodeWriter& writer, const V& value) {
  if constexpr (std::is_same_v<V, std::shared_ptr<platform::UIColor>>) {
    return colorJson(*value);
  } else if constexpr (std::is_same_v<V, std::shared_ptr<platform::UIImage>>) {
    return writer.imageJson(value);
  } else if constexpr (isOptional<V>) {
    return value ? shown(writer, *value) : nlohmann::json("");
  } else {
    return value;
  }
}

// Whether an optional member with this value is left out: false, 0, null, or nothing.
template <class V>
bool isEmpty(const V& value) {
  if constexpr (std::is_constructible_v<bool, const V&>) {
    return !static_cast<bool>(value);
  } else {
    return false;
  }
}

// Returns the subject of an action on a node; empty if it is gone. A part has a static function
// `of`.
template <class T>
auto subjectOf(const NodeTarget& target) {
  if constexpr (std::is_base_of_v<platform::Object, T>) {
    return target.as<T>();
  } else {
    return T::of(target);
  }
}

}  // namespace kinds

// Describes a kind of node that is written from a T: a class of the platform, or a part of
// something that has no class of its own.
//
//   KindBuilder<UISwitch>("switch")
//       .member("on", &UISwitch::isOn)
//       .member("enabled", &UIControl::isEnabled)
//       .action("toggle", [](UISwitch& view, bool on) { ... }, Argument<bool>{"on"})
//       .build()
//
// A node of a view has the members that every view has; one of a controller has those of its view.
template <class T>
class KindBuilder {
 public:
  explicit KindBuilder(std::string_view name, std::string_view title = {}) {
    _kind.name = name;
    _kind.title = title.empty() ? name : title;
    if constexpr (std::is_base_of_v<platform::Object, T>) {
      _kind.className = T::staticClassName;
      _kind.isFoundByClass = true;
    }
    if constexpr (std::is_base_of_v<platform::UIView, T>) {
      _kind.look = [](const NodeSubject& s) -> platform::UIView& { return s.as<T>(); };
    } else if constexpr (std::is_base_of_v<platform::UIViewController, T>) {
      _kind.look = [](const NodeSubject& s) -> platform::UIView& { return *s.as<T>().view(); };
    }
  }

  // A member that is always present.
  template <class G>
  KindBuilder& member(std::string_view name, G getter) {
    return add({name, kinds::formOf<kinds::Result<G, T>>()}, getter);
  }
  // Present if the getter returns a value.
  template <class G>
  KindBuilder& optional(std::string_view name, G getter) {
    return add({name, kinds::formOf<kinds::Result<G, T>>(), true}, getter);
  }
  // Present if the getter returns a value other than the default.
  template <class G, class V = kinds::Result<G, T>>
  KindBuilder& optional(std::string_view name, G getter, std::type_identity_t<V> leftOut) {
    return optional(name, [getter, leftOut](T& subject) {
      const V value = std::invoke(getter, subject);
      return value == leftOut ? std::nullopt : std::optional<V>(value);
    });
  }
  // A text with a fixed set of values.
  template <class G, class E, std::size_t N>
  KindBuilder& choice(std::string_view name, G getter, const std::array<Named<E>, N>& names) {
    return add({name, MemberForm::text, false, choicesOf(names)},
               [getter, names](T& subject) { return nameOf(names, std::invoke(getter, subject)); });
  }
  // The getter returns the JSON, or optional JSON.
  template <class G>
  KindBuilder& map(std::string_view name, G getter) {
    return add({name, MemberForm::map, kinds::isOptional<kinds::Result<G, T>>}, getter);
  }
  template <class G>
  KindBuilder& list(std::string_view name, G getter) {
    return add({name, MemberForm::list, kinds::isOptional<kinds::Result<G, T>>}, getter);
  }
  // A member that the writer itself puts into the node.
  KindBuilder& written(NodeMember member) {
    _kind.members.push_back(std::move(member));
    return *this;
  }

  // Shows nothing of its view.
  KindBuilder& withoutLook() {
    _kind.look = nullptr;
    return *this;
  }
  // Another node decides where this kind is shown; no class is shown as it.
  KindBuilder& placedByAnother() {
    _kind.isFoundByClass = false;
    return *this;
  }
  // The subviews of a view are shown too.
  KindBuilder& withSubviews() {
    return children([](NodeWriter& writer, T& view) { return writer.addSubviews(view); });
  }
  template <class F>
  KindBuilder& children(F addAll) {
    _kind.addChildren = [addAll](NodeWriter& writer, const NodeSubject& subject) {
      return addAll(writer, subject.as<T>());
    };
    return *this;
  }

  // A user action: `work` takes the subject, the tools if it needs them, and the arguments. An
  // action with invalid arguments is refused before.
  template <class F, class... A>
  KindBuilder& action(std::string_view name, F work, A... arguments) {
    auto perform = [work, arguments...](HandTools& tools, const NodeTarget& target,
                                        [[maybe_unused]] const nlohmann::json& action) {
      auto subject = kinds::subjectOf<T>(target);
      if (!subject) return refused("the node is gone");
      const std::tuple given{arguments.read(action)...};
      return std::apply(
          [&](const auto&... values) {
            std::string problem;
            ((problem.empty() && !values ? void(problem = arguments.problem()) : void()), ...);
            if (!problem.empty()) return refused(std::move(problem));
            if constexpr (std::is_invocable_v<F, T&, HandTools&, decltype(*values)...>) {
              return work(*subject, tools, *values...);
            } else {
              return work(*subject, *values...);
            }
          },
          given);
    };
    _kind.actions.push_back({name, {arguments.member()...}, std::move(perform)});
    return *this;
  }
  // An action that the application performs itself.
  KindBuilder& action(std::string_view name) {
    _kind.actions.push_back({name, {}, nullptr});
    return *this;
  }

  // A row with such a node in it shows this member as its value.
  KindBuilder& valueIn(std::string_view member) {
    return value(
        [member](const nlohmann::json& node) { return node.value(member, nlohmann::json()); });
  }
  KindBuilder& value(std::function<nlohmann::json(const nlohmann::json& node)> shownValue) {
    _kind.shownValue = std::move(shownValue);
    return *this;
  }

  NodeKind build() {
    _kind.write = [writers = std::move(_writers)](NodeWriter& writer, const NodeSubject& given,
                                                  nlohmann::json& node) {
      T& subject = given.as<T>();
      for (const auto& write : writers) write(writer, subject, node);
    };
    return std::move(_kind);
  }

 private:
  using Writer = std::function<void(NodeWriter&, T&, nlohmann::json& node)>;

  template <class G>
  KindBuilder& add(NodeMember member, G getter) {
    _writers.push_back([name = std::string(member.name), optional = member.optional, getter](
                           NodeWriter& writer, T& subject, nlohmann::json& node) {
      const auto& value = kinds::read(getter, writer, subject);
      if (optional && kinds::isEmpty(value)) return;
      node[name] = kinds::shown(writer, value);
    });
    _kind.members.push_back(std::move(member));
    return *this;
  }

  NodeKind _kind;
  std::vector<Writer> _writers;
};

}  // namespace settings
