#pragma once

#include "pages/Markup.h"

#include <string>

namespace vorq::gateway {

/// What is wrong with what was typed.
struct FormProblem {
    std::string sentence; ///< empty for nothing
    std::string field;    ///< the name of the field that it is about; empty for the whole form
};

struct InputField {
    std::string name; ///< unique in the page, its id as well
    std::string label;
    std::string type = "text";
    std::string autocomplete = "off";
    std::string value = {};
    std::string hint = {};
    bool isRequired = false;
};

/// A labelled input. A problem of its own stands below it, tied to it for those who hear the page,
/// and takes the focus.
[[nodiscard]] Markup inputField(const InputField& field, const FormProblem& problem = {});

/// The same for several lines.
[[nodiscard]] Markup textArea(const InputField& field, const FormProblem& problem = {});

[[nodiscard]] Markup hiddenField(const std::string& name, const std::string& value);
[[nodiscard]] Markup checkField(const std::string& name, const std::string& label);

struct FormButton {
    std::string text;
    std::string kind = {}; ///< classes of the style sheet
    std::string name = {}; ///< of several in a form: what tells them apart
    std::string value = {};
};
[[nodiscard]] Markup button(const FormButton& button);

/// A form that is posted to `action` with the token that tells it from one of another site.
[[nodiscard]] Markup postForm(const std::string& action, const std::string& token,
                              const Markup& content);
/// One that only leads to another page.
[[nodiscard]] Markup plainForm(const std::string& action, const Markup& content);

/// The problem of the whole form, for its top; empty if it belongs to a field.
[[nodiscard]] Markup formNotice(const FormProblem& problem);

inline constexpr const char* kTokenField = "token";

} // namespace vorq::gateway
