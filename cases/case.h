// A case: one film or cast with its landmarks, as a person hands it in. Texts are UTF-8, coordinates pixels of the
// image, x to the right, y down, whole or fractional; a lateral face looks right.
#pragma once

#include <functional>
#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "base/date.h"
#include "base/remark.h"
#include "base/source.h"

namespace cephtool {

// The values are the engine's codes.
enum class Kind { lateral = 0, frontal = 1, model = 2 };
enum class Sex { male = 1, female = 2 };
enum class Side { left, right };  // of the head that lay at the film

inline constexpr Kind all_kinds[] = {Kind::lateral, Kind::frontal, Kind::model};

const char* name_of(Kind kind);
const char* name_of(Sex sex);
const char* name_of(Side side);

// Hellman's dental stages, each at the place of the engine's ordinal.
inline constexpr const char* dental_stages[] = {"I", "IIA", "IIC", "IIIA", "IIIB", "IIIC", "IVA", "IVC", "VA"};

struct Position {
    double x = 0, y = 0;
};

struct Landmark {
    std::string name;
    Position position;
    int slot = -1;  // of the kind's table, where its reader has looked it up
};

struct VirtualLandmark {
    std::string name, construction;
};

// What another program has put into a case, under a key that begins with "x-".
struct ForeignKey {
    std::string key, json;  // the value as it stands in the file
};

struct Outline {
    std::string name;
    bool closed = false;
    std::vector<Position> points;
    std::vector<std::string> anchors;  // landmarks that are among the points
    std::vector<ForeignKey> foreign = {};
};

struct Case {
    std::string file;  // where it was read from
    std::string name;
    Kind kind = Kind::lateral;
    std::optional<Sex> sex;
    std::optional<Date> birth, film;
    std::optional<Side> side;
    std::string population;    // whose norms count, as tool::population_named has it; "" when not given
    std::string dental_stage;  // one of `dental_stages`, "" when not given
    std::optional<double> mm_per_pixel;
    std::vector<Landmark> landmarks;  // of the kind's table, placed ones only
    std::vector<Landmark> user;
    std::vector<Landmark> vertebrae;  // of a lateral film: points named as in vertebrae.h, placed ones only
    std::vector<VirtualLandmark> virtuals;
    std::vector<Outline> outlines;
    std::string image;             // file of the X-ray, relative to the case's own; "" when not given
    std::optional<int> palate;     // of a cast
    bool off_its_picture = false;  // turned round, so that it no longer lies on its X-ray
    std::vector<ForeignKey> foreign;
    std::vector<std::string> passed_over;  // what the file says beside that, and what a case written anew lacks
    std::vector<Remark> remarks;           // what changes how its numbers are to be read
    std::vector<std::string> notes;        // what the reader took for granted or left out, for the person who runs it
};

struct FilmFacts;

// When the scale of the X-ray is taken.
enum class FilmScaleUse {
    where_missing,  // when the case has none
    header,         // in place of the case's
    resolution      // the same, and as pixels an inch
};

// What the command line says about a case; it goes before what the case says about itself.
struct CaseOptions {
    std::optional<Sex> sex = {};
    std::optional<double> mm_per_pixel = {};
    std::optional<Remark> scale_remark = {};   // how that was told, where it is more than a number
    std::optional<double> magnification = {};  // of the X-ray whose scale is taken
    FilmScaleUse film_scale = FilmScaleUse::where_missing;
    std::string image = {};  // the X-ray, in place of the one that the case names
    // Reads what an X-ray's file says; where it is not set, or gives nothing, nothing is taken from the X-ray.
    std::function<std::optional<FilmFacts>(const std::string& file)> film_facts = {};
    bool scale_may_lack = false;              // else a case that gets none is refused
    bool mirror = false;                      // x is turned round, unless signs are seen to hold
    bool flip_y = false;                      // the same for y
    std::vector<std::string> landmarks = {};  // names of the points of a TPS file in their order; "-" passes one over
    std::optional<double> image_height = {};  // in pixels, for y that points up
    std::string population = {};              // as of Case; "" leaves the case's own
};

// Reads the cases in any of the formats of docs/case_format.md, told apart by content and extension: a TPS file holds
// any number of them, every other one. Throws an Error.
std::vector<Case> read_cases(const Source& source, const CaseOptions& options = {});

// The only case. Throws an Error when there are more.
Case read_case(const Source& source, const CaseOptions& options = {});

// What read_cases does with each case when its format has been read.
Case with_options(Case record, const Source& source, const CaseOptions& options);

// The X-ray that the case names, relative to where its own file is looked for; "" when it names none.
std::string image_file(const Case& record);

// The case in the project's own format; reading it again gives an equal case but for `file` and `notes`.
std::string to_json(const Case& record);

// The reader of the project's own format.
Case read_json_case(const Source& source);

}  // namespace cephtool
