// Events on a PostgreSQL server. In a build without its client library a stand-in says so (postgres_absent.cpp).
#pragma once

#include <memory>
#include <string>

#include "event_store.h"

std::unique_ptr<EventStore> OpenPostgresStore(const std::string& home, EventStore::Use use,
                                              const StoreOptions& options);
