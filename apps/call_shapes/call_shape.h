// The argument list of one export, described by kind: which images it reads and
// writes, and for every argument what it is (a row pointer into an image, a step, the
// region, a value, ...). A shape comes from the export's name (export_name_grammar.h)
// or from a row of the table in call_shapes_table.cpp; the cross-build test turns it
// into buffers and arguments (call_memory.h).
#ifndef PXKCC_CALL_SHAPES_CALL_SHAPE_H
#define PXKCC_CALL_SHAPES_CALL_SHAPE_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace pxkcross {

// Sample type of an image, by the type token of a name.
enum class SampleType { U8, U16, S16, U32, S32, F32, F64, U12, U1 };

// Bytes a buffer reserves for one sample (an upper bound for the packed 12u and 1u).
int sampleBytes(SampleType type);
// Size of the element that a row pointer addresses: steps and pointers of the image
// stay multiples of it.
int sampleUnit(SampleType type);
bool isFloat(SampleType type);
const char* sampleTypeToken(SampleType type);  // "8u", "16s", ...

// A value passed by value or pointed to (matrices, ranges, modes, alpha).
enum class ValueType { U8, I8, U16, I16, U32, I32, I64, F32, F64 };
int valueBytes(ValueType type);
const char* valueTypeToken(ValueType type);  // "u8", "i32", "f32", ...
ValueType valueTypeOf(SampleType type);      // the type of one sample of an image

enum class Role { Source, Destination, InPlace };

// One plane of an image: samples a pixel, how many luma columns share one of its
// columns (2 for the chroma planes of 422 and 420, 4 for 411 and 1620), and how many
// luma rows share one of its rows (2 for the chroma planes of 420, 4 for 1620).
struct Plane {
    int channels = 1;
    int widthDivisor = 1;
    int heightDivisor = 1;
};

struct Image {
    Role role = Role::Source;
    SampleType type = SampleType::U8;
    std::vector<Plane> planes;

    // Bytes of one row of plane p at its own resolution: the tight step.
    int64_t rowBytes(int p, int width) const;
    // Rows of plane p at its own resolution.
    int rows(int p, int height) const;
    // Bytes of one row at full resolution, the widest row any plane can have.
    int64_t fullRowBytes(int width) const;
};

enum class ArgKind {
    Pointer,        // T*: row 0 of one plane of an image
    PlanePointers,  // T* const[n]: row 0 of every plane of an image
    Step,           // int32 step of one plane, or of all planes of an image
    StepArray,      // const int32_t*: one step a plane
    StepArray64,    // const int64_t*: one step a plane
    Size,           // PxkSize {width, height} by value
    SizeL,          // PxkSizeL {int64 width, int64 height} by value
    WidthHeight,    // two int32: width, then height
    Roi,            // PxkRect {0, 0, width, height} by value
    Value,          // one value by value, random in [lo, hi]
    Values,         // pointer to `count` constant values, random in [lo, hi]
    Out,            // pointer to one value that the call writes
    Scratch,        // pointer to a work buffer of (perPixel * width + fixed) * rows bytes
    ScratchStep,    // int32: the row length of the last work buffer
};

struct Arg {
    ArgKind kind = ArgKind::Size;
    int image = -1;                             // Pointer, PlanePointers, Step, StepArray, StepArray64
    int plane = -1;                             // Pointer: the plane; Step: the plane, or -1 for all planes
    ValueType type = ValueType::I32;            // Value, Values, Out
    int count = 1;                              // Values
    double lo = 0, hi = 0;                      // Value, Values
    std::vector<double> choices;                // Value: drawn from these alone, where given
    bool alpha = false;                         // Value: full range of the destination's samples
    int64_t perPixel = 0, fixed = 0, rows = 1;  // Scratch
};

struct CallShape {
    std::vector<Image> images;
    std::vector<Arg> args;
    // Steps count elements of the image's sample type instead of bytes.
    bool stepsInElements = false;
    // Only positive steps (for exports that refuse zero and negative ones).
    bool positiveStepsOnly = false;
    // Float samples of every image are drawn from [floatLo, floatHi] instead of
    // random bytes; float alpha values always are.
    bool floatRange = false;
    double floatLo = 0.0, floatHi = 1.0;
};

// The argument list in the words of the table rows, e.g.
// "src[3] step[3] dst step size alpha:8u". A value drawn from a few given values alone
// reads "i32:1|4|16".
std::string describeArguments(const CallShape& shape);
// The images, e.g. "src 8u 1x1 1x2 1x2 | dst 8u 3x1": per plane channels x divisor.
std::string describeImages(const CallShape& shape);

// Reads a table row's argument text. `nameShape` is what the export's name gives
// (its images, and the arguments that "..." stands for); it is null when the name's
// tokens could not be read. Returns nothing and sets `error` on a bad row.
std::optional<CallShape> shapeFromRow(const std::string& text, const CallShape* nameShape, std::string* error);

}  // namespace pxkcross

#endif
