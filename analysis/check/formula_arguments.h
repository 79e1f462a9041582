// Functions of formulas that are checked, and their arguments.
#pragma once

#include "analysis/check/formula_cursor.h"
#include "analysis/check/landmarks.h"

namespace tool {

// That there is no such function, which ones there are, and which was meant.
std::string no_function(std::string_view name);

// Reads what stands in the brackets of a function. False, and a fault is told, when it makes no sense.
class FormulaArguments : protected FormulaCursor {
 protected:
    FormulaArguments(std::string_view text, int kind, Findings& findings, LandmarkCheck& landmarks)
        : FormulaCursor(text, findings), kind_(kind), landmarks_(landmarks) {}

    // The points of a function up to its ")".
    struct PointsWanted {
        std::string_view of;
        int points;
        bool number = false;  // behind them
    };
    bool points(const PointsWanted& function, std::string_view open);
    // The measure of a cast, which the twin gets, too.
    bool cast_token(std::string_view name, std::string& twin);
    // The quoted name of an item; whether there is such an item is for others to say.
    bool item(std::string_view name);

 private:
    int construction();

    int kind_;
    LandmarkCheck& landmarks_;
};

}  // namespace tool
