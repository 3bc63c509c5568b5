// setAttr and getAttr: attribute values named as "node.attr", "node.attr[3]",
// "node.attr[3].child" or with a path for the node ("|root|spine1.lockInfluenceWeights").
//
//   setAttr PLUG VALUE                          a bool, int or double ("1", "0.5", "true")
//   setAttr PLUG X Y Z                          a compound of numbers, one value per child
//   setAttr PLUG -type "string" TEXT
//   setAttr PLUG -type "stringArray" N A B ...  N strings
//   getAttr PLUG                                the value: an int for bool and int attributes,
//                                               a double, a string, a string array; a compound
//                                               of numbers or a whole array gives an array
//
// setAttr is undone exactly, elements it created included.
#include "commands/CommandSupport.h"
#include "lang/BuiltInCommand.h"
#include "scene/PlugPath.h"

#include <string>
#include <utility>
#include <vector>

namespace {

using runtime::reportFailure;
using runtime::Value;
using runtime::ValueType;

// A number as written: an int, a double, or a truth word.
bool readNumber(const HString& text, Value& value) {
    if (text.isInt()) {
        value = text.asInt();
        return true;
    }
    if (text.isDouble()) {
        value = text.asDouble();
        return true;
    }
    static const std::pair<const char*, bool> kWords[] = {{"true", true}, {"on", true},
                                                          {"yes", true},  {"false", false},
                                                          {"off", false}, {"no", false}};
    for (const auto& word : kWords) {
        if (text.str() == word.first) {
            value = word.second;
            return true;
        }
    }
    return false;
}

bool isNumericCompound(const runtime::Plug& plug) {
    const runtime::AttributeDef& def = *plug.attribute();
    if (def.kind() != runtime::AttributeKind::kCompound || def.childCount() == 0)
        return false;
    for (size_t i = 0; i < def.childCount(); ++i)
        if (def.child(i)->isArray() || !runtime::isNumeric(def.child(i)->valueType()))
            return false;
    return true;
}

runtime::Plug plugFor(const char* command, const HStringArray& objects, HStatus& status) {
    if (objects.length() == 0) {
        status = reportFailure(command, "Give the attribute as NODE.ATTRIBUTE.");
        return runtime::Plug();
    }
    runtime::Plug plug = runtime::findPlug(runtime::scene(), objects[0].str(), &status);
    if (!status)
        status = reportFailure(command, status);
    return plug;
}

class SetAttrCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-typ", "-type", HSyntax::kString);
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        HStringArray objects = runtime::commandObjects(parser);
        HStatus status;
        runtime::Plug plug = plugFor("setAttr", objects, status);
        if (!status)
            return status;
        std::vector<HString> values;
        for (unsigned i = 1; i < objects.length(); ++i)
            values.push_back(objects[i]);
        std::string type =
            parser.isFlagSet("type") ? parser.flagArgumentString("type", 0).str() : std::string();
        const std::string name = plug.name();

        if (type == "string" || (type.empty() && isTextual(plug) && values.size() == 1)) {
            if (values.size() != 1)
                return reportFailure("setAttr", name + " takes one string, got " +
                                                    std::to_string(values.size()) + ".");
            return write(plug, values[0].str());
        }
        if (type == "stringArray")
            return writeStringArray(plug, values);
        if (!type.empty())
            return reportFailure("setAttr", "Unknown value type: " + type + ".");
        if (isNumericCompound(plug))
            return writeChildren(plug, values);
        if (values.size() != 1)
            return reportFailure("setAttr", name + " takes one value, got " +
                                                std::to_string(values.size()) + ".");
        Value value;
        if (!readNumber(values[0], value))
            return reportFailure("setAttr", "\"" + values[0].str() + "\" is not a number.");
        return write(plug, value);
    }

private:
    static bool isTextual(const runtime::Plug& plug) {
        return plug.attribute()->valueType() == ValueType::kString;
    }

    HStatus write(const runtime::Plug& plug, const Value& value) {
        HStatus status = m_journal.setValue(plug, value);
        return status ? status : reportFailure("setAttr", status);
    }

    HStatus writeStringArray(const runtime::Plug& plug, const std::vector<HString>& values) {
        if (values.empty() || !values[0].isInt() || values[0].asInt() < 0)
            return reportFailure("setAttr",
                                 "-type \"stringArray\" needs the number of strings first.");
        size_t count = static_cast<size_t>(values[0].asInt());
        if (values.size() - 1 != count)
            return reportFailure("setAttr", "-type \"stringArray\" announces " +
                                                std::to_string(count) + " strings, got " +
                                                std::to_string(values.size() - 1) + ".");
        runtime::StringList strings;
        for (size_t i = 1; i < values.size(); ++i)
            strings.push_back(values[i].str());
        return write(plug, strings);
    }

    HStatus writeChildren(const runtime::Plug& plug, const std::vector<HString>& values) {
        size_t count = plug.attribute()->childCount();
        if (values.size() != count)
            return reportFailure("setAttr", plug.name() + " takes " + std::to_string(count) +
                                                " values, got " + std::to_string(values.size()) +
                                                ".");
        std::vector<Value> numbers(count);
        for (size_t i = 0; i < count; ++i)
            if (!readNumber(values[i], numbers[i]))
                return reportFailure("setAttr", "\"" + values[i].str() + "\" is not a number.");
        for (size_t i = 0; i < count; ++i) {
            HStatus status = write(plug.child(i), numbers[i]);
            if (!status)
                return status;
        }
        return HS::kSuccess;
    }
};

// The value at plug; a typed attribute without a default reads as empty text or list.
HStatus readValue(const runtime::Plug& plug, Value& value) {
    HStatus status = plug.read(value);
    if (status && value.index() == 0)
        value = runtime::zeroValue(plug.attribute()->valueType());
    return status;
}

// getAttr's result for one value.
void setValueResult(const Value& value) {
    switch (runtime::valueTypeOf(value)) {
    case ValueType::kBool:
        HPxCommand::setResult(std::get<bool>(value) ? 1 : 0);
        break;
    case ValueType::kInt:
        HPxCommand::setResult(std::get<int>(value));
        break;
    case ValueType::kDouble:
        HPxCommand::setResult(std::get<double>(value));
        break;
    case ValueType::kString:
        HPxCommand::setResult(HString(std::get<std::string>(value)));
        break;
    case ValueType::kStringArray: {
        HStringArray strings;
        for (const std::string& text : std::get<runtime::StringList>(value))
            strings.append(HString(text));
        HPxCommand::setResult(strings);
        break;
    }
    case ValueType::kNone:
        HPxCommand::clearResult();
        break;
    }
}

class GetAttrCommand : public HPxCommand {
public:
    static HSyntax createSyntax() { return HSyntax(); }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        HStringArray objects = runtime::commandObjects(parser);
        HStatus status;
        runtime::Plug plug = plugFor("getAttr", objects, status);
        if (!status)
            return status;
        if (objects.length() > 1)
            return reportFailure("getAttr", "It reads one attribute at a time.");
        if (plug.isArray())
            return readArray(plug);
        if (isNumericCompound(plug))
            return readChildren(plug);
        Value value;
        status = readValue(plug, value);
        if (!status)
            return reportFailure("getAttr", status);
        setValueResult(value);
        return HS::kSuccess;
    }

private:
    static HStatus readChildren(const runtime::Plug& plug) {
        HDoubleArray values;
        for (size_t i = 0; i < plug.attribute()->childCount(); ++i) {
            Value value, number;
            readValue(plug.child(i), value);
            values.append(runtime::convertValue(value, ValueType::kDouble, number)
                              ? std::get<double>(number)
                              : 0.0);
        }
        setResult(values);
        return HS::kSuccess;
    }

    static HStatus readArray(const runtime::Plug& plug) {
        ValueType type = plug.attribute()->valueType();
        if (plug.attribute()->kind() == runtime::AttributeKind::kCompound ||
            type == ValueType::kNone || type == ValueType::kStringArray)
            return reportFailure("getAttr", plug.name() + " is an array; name one element.");
        HIntArray ints;
        HDoubleArray doubles;
        HStringArray strings;
        for (unsigned index : plug.elementIndices()) {
            Value value, number;
            readValue(plug.element(index), value);
            if (type == ValueType::kString)
                strings.append(HString(std::get<std::string>(value)));
            else if (type == ValueType::kDouble)
                doubles.append(std::get<double>(value));
            else if (runtime::convertValue(value, ValueType::kInt, number))
                ints.append(std::get<int>(number));
        }
        if (type == ValueType::kString)
            setResult(strings);
        else if (type == ValueType::kDouble)
            setResult(doubles);
        else
            setResult(ints);
        return HS::kSuccess;
    }
};

const bool setRegistered = runtime::registerBuiltInCommand(
    "setAttr", runtime::createCommand<SetAttrCommand>, &SetAttrCommand::createSyntax);
const bool getRegistered = runtime::registerBuiltInCommand(
    "getAttr", runtime::createCommand<GetAttrCommand>, &GetAttrCommand::createSyntax);

} // namespace
