#pragma once

#include "storage/scenememories.h"

/// The settings and the scenes of a folder, opened as the panel does.
struct Memories
{
    explicit Memories(const QByteArray &organisation, storage::Disk &disk = storage::realDisk())
        : live(organisation.constData(), "Tamber_Setting", disk),
          scenes(live, organisation.constData(), disk)
    {
    }

    /// Replaces all live settings by these values.
    void take(const storage::Values &values)
    {
        storage::Transaction transaction(live.store());
        for (int group = 0; group < storage::groupCount; ++group)
            for (int key = 0; key < storage::keyCount; ++key) {
                const auto g = storage::Group(group);
                const auto k = storage::Key(key);
                transaction.set(g, k, values.raw(g, k));
            }
        const storage::Entries foreign = live.values().foreign();
        for (const QByteArray &entry : foreign.keys())
            transaction.setForeign(entry, values.foreign().value(entry));
        for (const QByteArray &entry : values.foreign().keys())
            transaction.setForeign(entry, values.foreign().value(entry));
        transaction.commit();
    }

    /// Loads a scene. Returns false if it does not exist.
    bool load(int slot)
    {
        const auto scene = scenes.read(slot);
        if (!scene) return false;
        take(storage::Values(scene->entries));
        live.adoptContent(*scene);
        live.flush();
        return true;
    }

    Settings live;
    SceneMemories scenes;
};
