#include "dxf_drawings.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <unistd.h>

namespace bench {
namespace {

constexpr int kLayers = 20;
constexpr unsigned kFirstHandle = 0x100;
constexpr double kExtent = 100000.0;

/// Writes groups as CAD programs do: three columns for codes, up to 16 digits for coordinates.
class GroupWriter {
public:
    explicit GroupWriter(const std::filesystem::path& file) : out_(file, std::ios::binary) {}

    void text(int code, const std::string& value) {
        char head[16];
        std::snprintf(head, sizeof head, "%3d\n", code);
        out_ << head << value << '\n';
    }
    void whole(int code, int value) {
        char digits[16];
        std::snprintf(digits, sizeof digits, "%6d", value);
        text(code, digits);
    }
    void real(int code, double value) {
        char digits[32];
        std::snprintf(digits, sizeof digits, "%.16g", value);
        text(code, digits);
    }
    void point(int code, double x, double y) {
        real(code, x);
        real(code + 10, y);
        real(code + 20, 0.0);
    }
    void handle(int code, unsigned value) {
        char digits[16];
        std::snprintf(digits, sizeof digits, "%X", value);
        text(code, digits);
    }

private:
    std::ofstream out_;
};

class DrawingWriter {
public:
    DrawingWriter(const std::filesystem::path& file, std::size_t entities)
        : groups_(file), entities_(entities) {}

    void write(Content content) {
        header();
        tables();
        blocks();
        section("ENTITIES");
        for (std::size_t i = 0; i < entities_; ++i) {
            if (content == Content::kMixed) {
                mixed(i);
            } else {
                polyline(true);
            }
        }
        groups_.text(0, "ENDSEC");
        groups_.text(0, "EOF");
    }

private:
    void section(const char* name) {
        groups_.text(0, "SECTION");
        groups_.text(2, name);
    }

    void header() {
        section("HEADER");
        groups_.text(9, "$ACADVER");
        groups_.text(1, "AC1015");
        groups_.text(9, "$DWGCODEPAGE");
        groups_.text(3, "ANSI_936");
        groups_.text(9, "$HANDSEED");
        groups_.handle(5, kFirstHandle + static_cast<unsigned>(entities_) + 1);
        groups_.text(0, "ENDSEC");
    }

    void record(const char* type, unsigned handle, const std::string& name, const char* subclass) {
        groups_.text(0, type);
        groups_.handle(5, handle);
        groups_.text(100, "AcDbSymbolTableRecord");
        groups_.text(100, subclass);
        groups_.text(2, name);
    }

    void tables() {
        section("TABLES");
        groups_.text(0, "TABLE");
        groups_.text(2, "LAYER");
        groups_.handle(5, 2);
        for (unsigned i = 0; i < kLayers; ++i) {
            record("LAYER", 0x20 + i, layerName(i), "AcDbLayerTableRecord");
            groups_.whole(70, 0);
            groups_.whole(62, static_cast<int>(i % 7 + 1));
            groups_.text(6, "CONTINUOUS");
        }
        groups_.text(0, "ENDTAB");
        groups_.text(0, "TABLE");
        groups_.text(2, "BLOCK_RECORD");
        groups_.handle(5, 1);
        record("BLOCK_RECORD", 0x10, "*Model_Space", "AcDbBlockTableRecord");
        record("BLOCK_RECORD", 0x11, "DOOR", "AcDbBlockTableRecord");
        groups_.text(0, "ENDTAB");
        groups_.text(0, "ENDSEC");
    }

    void blocks() {
        section("BLOCKS");
        for (unsigned i = 0; i < 2; ++i) {
            groups_.text(0, "BLOCK");
            groups_.handle(5, 0x12 + 2 * i);
            groups_.text(8, "0");
            groups_.text(2, i == 0 ? "*Model_Space" : "DOOR");
            groups_.whole(70, 0);
            groups_.point(10, 0, 0);
            groups_.text(0, "ENDBLK");
            groups_.handle(5, 0x13 + 2 * i);
            groups_.text(8, "0");
        }
        groups_.text(0, "ENDSEC");
    }

    static std::string layerName(unsigned index) { return "LAYER-" + std::to_string(index); }

    double coordinate() { return uniform_(random_) * kExtent; }

    void entity(const char* type, const char* subclass) {
        groups_.text(0, type);
        groups_.handle(5, nextHandle_++);
        groups_.handle(330, 0x10);
        groups_.text(100, "AcDbEntity");
        groups_.text(8, layerName(static_cast<unsigned>(random_() % kLayers)));
        groups_.text(100, subclass);
    }

    void mixed(std::size_t index) {
        switch (index % 10) {
        case 0:
            circle();
            break;
        case 1:
            arc();
            break;
        case 2:
            text();
            break;
        case 3:
            entity("POINT", "AcDbPoint");
            groups_.point(10, coordinate(), coordinate());
            break;
        case 4:
            insert();
            break;
        case 5:
        case 6:
            polyline(index % 20 < 10);
            break;
        default:
            entity("LINE", "AcDbLine");
            groups_.point(10, coordinate(), coordinate());
            groups_.point(11, coordinate(), coordinate());
        }
    }

    void circle() {
        entity("CIRCLE", "AcDbCircle");
        groups_.point(10, coordinate(), coordinate());
        groups_.real(40, coordinate() / 100);
    }

    void arc() {
        entity("ARC", "AcDbCircle");
        groups_.point(10, coordinate(), coordinate());
        groups_.real(40, coordinate() / 100);
        groups_.text(100, "AcDbArc");
        groups_.real(50, uniform_(random_) * 360);
        groups_.real(51, uniform_(random_) * 360);
    }

    void text() {
        entity("TEXT", "AcDbText");
        groups_.point(10, coordinate(), coordinate());
        groups_.real(40, 250.0);
        groups_.text(1, "\xB0\xE5 B-" + std::to_string(nextHandle_));
        groups_.text(100, "AcDbText");
    }

    void insert() {
        entity("INSERT", "AcDbBlockReference");
        groups_.text(2, "DOOR");
        groups_.point(10, coordinate(), coordinate());
        groups_.real(50, 90.0);
    }

    void polyline(bool closed) {
        const int vertices = 4 + static_cast<int>(random_() % 9);
        entity("LWPOLYLINE", "AcDbPolyline");
        groups_.whole(90, vertices);
        groups_.whole(70, closed ? 1 : 0);
        groups_.real(43, 0.0);
        const double x = coordinate();
        const double y = coordinate();
        for (int i = 0; i < vertices; ++i) {
            const double angle = 6.283185307179586 * i / vertices;
            groups_.real(10, x + 3000 * std::cos(angle));
            groups_.real(20, y + 1200 * std::sin(angle));
            if (i % 4 == 3) groups_.real(42, 0.25);
        }
    }

    GroupWriter groups_;
    std::size_t entities_;
    unsigned nextHandle_ = kFirstHandle;
    std::mt19937 random_{20240229};
    std::uniform_real_distribution<double> uniform_{0.0, 1.0};
};

/// The generated files; deletes them at the end.
class DrawingFiles {
public:
    DrawingFiles() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "orn-bench-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) std::abort();
        folder_ = pattern;
    }
    ~DrawingFiles() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    DrawingFiles(const DrawingFiles&) = delete;
    DrawingFiles& operator=(const DrawingFiles&) = delete;

    const std::filesystem::path& get(Content content, std::size_t entities) {
        std::filesystem::path& file = files_[{content, entities}];
        if (file.empty()) {
            file = folder_ / (std::to_string(files_.size()) + ".dxf");
            DrawingWriter(file, entities).write(content);
        }
        return file;
    }

private:
    std::filesystem::path folder_;
    std::map<std::pair<Content, std::size_t>, std::filesystem::path> files_;
};

} // namespace

const std::filesystem::path& drawing(Content content, std::size_t entities) {
    static DrawingFiles files;
    return files.get(content, entities);
}

} // namespace bench
