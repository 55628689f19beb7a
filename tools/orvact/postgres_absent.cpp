#include "postgres_store.h"

std::unique_ptr<EventStore> OpenPostgresStore(const std::string&, EventStore::Use, const StoreOptions&)
{
    throw DatabaseError("this orvact was built without PostgreSQL; it keeps events in files");
}
