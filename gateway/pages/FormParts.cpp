#include "pages/FormParts.h"

#include "pages/PageFrame.h"

namespace vorq::gateway {

namespace {

bool isWrong(const InputField& field, const FormProblem& problem) {
    return problem.field == field.name && !problem.sentence.empty();
}

Attributes commonAttributes(const InputField& field, const FormProblem& problem) {
    Attributes attributes = {
        {"id", field.name}, {"name", field.name}, {"autocomplete", field.autocomplete}};
    if (field.isRequired) attributes.push_back({"required", ""});
    if (isWrong(field, problem)) {
        attributes.push_back({"aria-invalid", "true"});
        attributes.push_back({"autofocus", ""});
    }
    std::string described = isWrong(field, problem) ? field.name + "-wrong" : "";
    if (!field.hint.empty()) described += (described.empty() ? "" : " ") + field.name + "-hint";
    if (!described.empty()) attributes.push_back({"aria-describedby", described});
    return attributes;
}

Markup labelled(const InputField& field, const FormProblem& problem, const Markup& control) {
    Markup content = Markup::element("label", {{"for", field.name}}, field.label) + control;
    if (isWrong(field, problem)) {
        content += Markup::element(
            "p", {{"class", "wrong"}, {"id", field.name + "-wrong"}, {"role", "alert"}},
            problem.sentence);
    }
    if (!field.hint.empty()) {
        content +=
            Markup::element("p", {{"class", "hint"}, {"id", field.name + "-hint"}}, field.hint);
    }
    return Markup::element("div", {{"class", "field"}}, content);
}

} // namespace

Markup inputField(const InputField& field, const FormProblem& problem) {
    Attributes attributes = commonAttributes(field, problem);
    attributes.push_back({"type", field.type});
    if (!field.value.empty()) attributes.push_back({"value", field.value});
    return labelled(field, problem, Markup::element("input", attributes));
}

Markup textArea(const InputField& field, const FormProblem& problem) {
    Attributes attributes = commonAttributes(field, problem);
    attributes.push_back({"rows", "4"});
    attributes.push_back({"spellcheck", "false"});
    return labelled(field, problem, Markup::element("textarea", attributes, field.value));
}

Markup hiddenField(const std::string& name, const std::string& value) {
    return Markup::element("input", {{"type", "hidden"}, {"name", name}, {"value", value}});
}

Markup checkField(const std::string& name, const std::string& label) {
    return Markup::element(
        "div", {{"class", "field check"}},
        Markup::element("input",
                        {{"type", "checkbox"}, {"id", name}, {"name", name}, {"value", "yes"}}) +
            Markup(" ") + Markup::element("label", {{"for", name}}, label));
}

Markup button(const FormButton& button) {
    Attributes attributes = {{"type", "submit"}};
    if (!button.kind.empty()) attributes.push_back({"class", button.kind});
    if (!button.name.empty()) {
        attributes.push_back({"name", button.name});
        attributes.push_back({"value", button.value});
    }
    return Markup::element("button", attributes, button.text);
}

Markup postForm(const std::string& action, const std::string& token, const Markup& content) {
    return Markup::element("form", {{"method", "post"}, {"action", action}},
                           hiddenField(kTokenField, token) + content);
}

Markup plainForm(const std::string& action, const Markup& content) {
    return Markup::element("form", {{"method", "get"}, {"action", action}}, content);
}

Markup formNotice(const FormProblem& problem) {
    return problem.field.empty() ? problemNotice(problem.sentence) : Markup();
}

} // namespace vorq::gateway
