#pragma once

#include "storage/keys.h"

/// A key of a group, as a setting that can be read and written.
template <typename TypedKey>
constexpr storage::Setting<TypedKey> in(storage::Group group, TypedKey key)
{
    return {group, key};
}
