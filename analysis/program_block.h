// Runs a program for up to 64 records at a time, step by step for all of them. Gives the bits of ProgramRun, for items
// that rest on landmarks and numbers alone; says which records of an item only ProgramRun can answer for: those where
// something may be undefined. Virtual landmarks, casts and norms are ProgramRun's. For one thread.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "analysis/lane_arithmetic.h"
#include "analysis/program.h"

namespace tool {

class ProgramBlock {
 public:
    // `program` must outlive this object.
    explicit ProgramBlock(const Program& program);

    // The landmarks that count, as bits of Program::needs: slots of the kind's table, then places in its names.
    std::span<const std::size_t> landmarks() const { return landmarks_; }
    // Of each record where they lie, in steps, the millimetres of a step, and the steps of a pixel: to be set before it
    // runs. (0, 0) is not placed.
    LanePoints& landmark(std::size_t place) { return points_[place]; }
    LaneNumbers scale{}, pixel{};
    // Of the first `count` lanes.
    void run(std::size_t count);

    // Of items by number. What does not serve has no values here.
    bool serves(int item) const { return served_[static_cast<std::size_t>(item)]; }
    const LaneNumbers& values(int item) const;
    // Records that lack what the item needs for sure, and others that ProgramRun answers for.
    Lanes lacking(int item) const { return absent_for(program_.needs_of_item(item) + program_.words); }
    Lanes open(int item) const;
    // Records that a text is selected for, in place of the value.
    Lanes texts(int item) const;

 private:
    std::size_t bit_of(const Step& landmark) const;
    bool is_served(const Step& step) const;
    void plan();
    void compute(StepId id);
    Lanes compute_plain(const Step& step, StepId id);
    Lanes absent_for(const std::uint64_t* needs) const;
    const LanePoints& point(StepId id) const { return points_[place_[id]]; }
    const LaneNumbers& number(StepId id) const { return is_point_[id] ? point(id).x : numbers_[place_[id]]; }
    Vec2 at(StepId id, std::size_t lane) const;

    const Program& program_;
    std::vector<std::size_t> landmarks_;
    std::vector<Lanes> absent_;  // of each landmark's bit
    std::vector<bool> served_;   // of each item
    std::vector<StepId> order_;  // steps that served items take
    std::vector<bool> only_sign_, is_point_;
    std::vector<std::size_t> place_;  // of each step, in one of these two
    std::vector<LanePoints> points_;  // the landmarks first
    std::vector<LaneNumbers> numbers_;
    std::vector<Lanes> lost_;  // of each step the lanes in which something that it rests on is absent or undefined
    Lanes all_ = 0;
};

}  // namespace tool
