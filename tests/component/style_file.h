// What the tests of component styles share: a folder, the message boxes, records to compare.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "component/component_func.h"
#include "support/temporary_folder.h"
#include "win/state.h"

using Components = std::map<CString, ComponentInfo>;

/// All fields of a record, which its own comparison does not look at.
inline auto fields(const ComponentInfo& c) {
    return std::tie(c.groupName, c.typeName, c.styleName, c.attributeName, c.attributeValue1,
                    c.attributeValue2, c.attributeValue3, c.attributeValue4, c.lineColorIndex,
                    c.lineType, c.lineScale, c.lineWidth, c.simpleLineColorIndex, c.simpleLineType,
                    c.simpleLineScale, c.simpleLineWidth, c.setSimpleLineRealWidth, c.setHatch,
                    c.hatchName, c.hatchColorIndex, c.hatchScale, c.expressionStyle,
                    c.lineLayerInfo, c.hatchLayerInfo, c.simpleLineLayerInfo, c.useFloorHeight,
                    c.dryConstructionMethod);
}

inline ComponentInfo named(const wchar_t* group, const wchar_t* type, const wchar_t* style) {
    ComponentInfo info;
    info.groupName = group;
    info.typeName = type;
    info.styleName = style;
    return info;
}

/// A record in which no two fields of a kind have the same value, nor that of a new record.
inline ComponentInfo distinct(const wchar_t* group, const wchar_t* type, const wchar_t* style) {
    ComponentInfo c = named(group, type, style);
    c.attributeName = L"n";
    c.attributeValue1 = 1, c.attributeValue2 = 2, c.attributeValue3 = 3, c.attributeValue4 = -4;
    c.lineColorIndex = 5, c.lineType = L"l", c.lineScale = 0.5, c.lineWidth = 6;
    c.simpleLineColorIndex = 7, c.simpleLineType = L"sl", c.simpleLineScale = 2;
    c.simpleLineWidth = 8, c.setSimpleLineRealWidth = 0, c.setHatch = 1, c.hatchName = L"中/\"h";
    c.hatchColorIndex = 9, c.hatchScale = 10, c.expressionStyle = 11;
    c.lineLayerInfo = {L"A", 12, L"a", 13, 14, 0, 1};
    c.hatchLayerInfo = {L"B", 15, L"b", 16, 17, 1, 0};
    c.simpleLineLayerInfo = {L"C", 18, L"c", 19, 20, 1, 1};
    c.useFloorHeight = 0, c.dryConstructionMethod = 21;
    return c;
}

class StyleFile : public testing::Test {
protected:
    CString path(const char* name = "styles.json") const {
        return (folder_.path() / name).wstring().c_str();
    }

    std::string bytes(const char* name = "styles.json") const {
        std::ifstream file(folder_.path() / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    Components read(const std::string& document) const {
        std::ofstream(folder_.path() / "styles.json", std::ios::binary) << document;
        return ComponentFunc::GetAllComponentInfo(path());
    }

    void add(ComponentInfo info) {
        const CString key = info.groupName + L"-" + info.typeName + L"-" + info.styleName;
        components_[key] = std::move(info);
    }

    Components savedAndRead() const {
        ComponentFunc::SaveComponentInfo(components_, path());
        return ComponentFunc::GetAllComponentInfo(path());
    }

    /// The texts of the message boxes since the last call.
    std::vector<std::wstring> messages() {
        std::vector<std::wstring> texts;
        for (const auto& box : state_.messageBoxes)
            texts.push_back(box.text);
        state_.messageBoxes.clear();
        return texts;
    }

    headless::WinState state_;
    test_support::TemporaryFolder folder_;
    Components components_;
};

inline const std::vector<std::wstring> kQuiet;
inline const std::vector<std::wstring> kBroken = {L"数据文件解析错误!"};
inline const std::vector<std::wstring> kNoJson = {L"请输入json文件"};
