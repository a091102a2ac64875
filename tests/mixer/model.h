#pragma once

#include "mixer/parameters.h"
#include "storage/values.h"

#include <QStringList>

#include <array>

/// A second, simple implementation of the mixer's rules: the stored values after each gesture. It
/// uses the scales and parameters of the mixer, but none of its rules.
struct Model
{
    struct Strip
    {
        int fader = 157;
        bool eq = false;
        bool comp = false;
        bool solo = false;
        bool mute = false;
        bool selected = false;
        bool lowCut = false;
        bool savedMute = false;
        std::array<int, mixer::parameterCount> knobs = defaultKnobs();
        QString name;

        bool operator==(const Strip &o) const;
    };

    // Tracks 1 to 16, then the pairs, then the master.
    static constexpr int pairs = 16;
    static constexpr int master = 24;
    std::array<Strip, 25> strips;
    std::array<int, 16> pans = centredPans();
    std::array<bool, 16> phases{};
    std::array<bool, 8> linked{};
    std::array<int, 8> outputs{0, 1, 4, 5, 6, 7, 8, 9};
    bool stereoBus = true;
    bool bypassed = false;

    Model() = default;
    /// The stored values. If a text does not match its position, the position is -1.
    explicit Model(const storage::Values &values);
    bool operator==(const Model &o) const;
    /// Each strip, input or output that differs, in words.
    QStringList differences(const Model &expected) const;

    /// @name Gestures
    /// `strip` and `input` count from 0.
    ///@{
    void dragFader(int strip, int down);
    void stepFader(int strip, int steps);
    void dragPan(int input, int step);
    void stepPan(int input, int steps);
    void setSolo(int strip, bool on);
    void select(int strip, bool on);
    void setLinked(int pair, bool on);
    /// The strip that the knobs edit, -1 if there is none.
    int edited() const;
    void recall(const Model &scene);
    ///@}

private:
    static std::array<int, mixer::parameterCount> defaultKnobs();
    static std::array<int, 16> centredPans();

    bool isShown(int strip) const;
    bool isAnotherSoloed(int strip) const;
    void copy(int from, int to);
    QStringList lines() const;
};
