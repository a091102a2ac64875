#include "simulator/mixerstate.h"

#include <tuple>

namespace simulator {
namespace {

auto tie(const EqBand &b)
{
    return std::tie(b.gain, b.freq, b.q);
}

auto tie(const Eq &e)
{
    return std::tie(e.bands, e.on, e.lowCut);
}

auto tie(const Compressor &c)
{
    return std::tie(c.threshold, c.ratio, c.attack, c.release, c.gain, c.link, c.on);
}

auto tie(const Input &i)
{
    return std::tie(i.fader, i.pan, i.mute, i.solo, i.phase, i.eq, i.comp);
}

auto tie(const MasterSide &m)
{
    return std::tie(m.fader, m.mute);
}

auto tie(const Source &s)
{
    return std::tie(s.type, s.no);
}

auto tie(const MixerState &m)
{
    return std::tie(m.inputs, m.master, m.lineOuts, m.stereoBus, m.trueBypass);
}

} // namespace

bool EqBand::operator==(const EqBand &o) const
{
    return tie(*this) == tie(o);
}

bool Eq::operator==(const Eq &o) const
{
    return tie(*this) == tie(o);
}

bool Compressor::operator==(const Compressor &o) const
{
    return tie(*this) == tie(o);
}

bool Input::operator==(const Input &o) const
{
    return tie(*this) == tie(o);
}

bool MasterSide::operator==(const MasterSide &o) const
{
    return tie(*this) == tie(o);
}

bool Source::operator==(const Source &o) const
{
    return tie(*this) == tie(o);
}

bool MixerState::operator==(const MixerState &o) const
{
    return tie(*this) == tie(o);
}

} // namespace simulator
