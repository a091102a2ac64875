#pragma once

#include "storage/keys.h"

/// The setting for a key of a group.
template <typename TypedKey>
constexpr storage::Setting<TypedKey> in(storage::Group group, TypedKey key)
{
    return {group, key};
}
