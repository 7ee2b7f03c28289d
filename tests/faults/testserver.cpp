#include "tests/faults/testserver.h"

#include <libpq-fe.h>
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace veldona::faults {

TestServer& TestServer::get() {
    static TestServer server;
    return server;
}

TestServer::TestServer() {
    script("start");
    sql("CREATE ROLE veldona_kasa; CREATE ROLE veldona_sahip LOGIN; CREATE ROLE kasa1 LOGIN IN ROLE "
        "veldona_kasa; CREATE ROLE kasa2 LOGIN IN ROLE veldona_kasa");
}

// A child process that ends like its parent would stop the parent's server.
TestServer::~TestServer() {
    const std::string stop = VELDONA_SCRIPTS "/testserver stop " + place_.path().string();
    static_cast<void>(!std::system(stop.c_str()));
}

void TestServer::script(const std::string& command) const {
    const std::string line = VELDONA_SCRIPTS "/testserver " + command + ' ' + place_.path().string();
    if (std::system(line.c_str()) != 0) throw std::runtime_error("the test's server: " + command);
}

std::string TestServer::folder() const {
    std::string home = test::bytesOf(place_ / "home");
    while (home.ends_with('\n'))
        home.pop_back();
    return home;
}

void TestServer::restart() const {
    script("restart");
}

std::string TestServer::sql(const std::string& text, const std::string& database) const {
    const std::string address = "host=" + folder() + " port=5432 user=veldona dbname=" + database;
    const std::unique_ptr<PGconn, decltype(&PQfinish)> connection(PQconnectdb(address.c_str()), &PQfinish);
    const std::unique_ptr<PGresult, decltype(&PQclear)> answer(PQexec(connection.get(), text.c_str()),
                                                               &PQclear);
    const ExecStatusType status = PQresultStatus(answer.get());
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
        throw std::runtime_error(PQerrorMessage(connection.get()));
    return PQntuples(answer.get()) > 0 ? PQgetvalue(answer.get(), 0, 0) : "";
}

std::string TestServer::makeDatabase(const std::string& like, const std::string& tablespace) {
    const std::string name = "defter" + std::to_string(++made_);
    sql("CREATE DATABASE " + name + " OWNER veldona_sahip TEMPLATE " + like + " TABLESPACE " + tablespace);
    return name;
}

std::string TestServer::makeTablespace(const std::filesystem::path& folder) {
    std::filesystem::create_directory(folder);
    const passwd* server = geteuid() == 0 ? getpwnam("postgres") : nullptr; // as scripts/testserver runs it
    if (server != nullptr && chown(folder.c_str(), server->pw_uid, server->pw_gid) != 0)
        throw std::runtime_error("no folder for the test's server");
    const std::string name = "alan" + std::to_string(++made_);
    sql("CREATE TABLESPACE " + name + " LOCATION '" + folder.string() + "'");
    return name;
}

void putAddress(const Drive& drive, const std::string& address) {
    test::writeBytes(drive.books().replace_extension(".sunucu"), address + "\n");
}

} // namespace veldona::faults
