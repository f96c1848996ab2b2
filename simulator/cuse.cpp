#include "simulator/cuse.h"

#define FUSE_USE_VERSION 31 // NOLINT(cppcoreguidelines-macro-usage): for the header below
#include <fuse3/cuse_lowlevel.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace
{

constexpr size_t NAME_SIZE = 120; /* of "DEVNAME=" and the node's name */

Sim_Cuse *cuse_of(fuse_req_t call)
{
    return static_cast<Sim_Cuse *>(fuse_req_userdata(call));
}

void note_ready(void *cuse)
{
    static_cast<Sim_Cuse *>(cuse)->ready = true;
}

void open_node(fuse_req_t call, fuse_file_info *file)
{
    const int error = Sim_Device_Open(cuse_of(call)->device);
    if (error != 0) {
        fuse_reply_err(call, error);
    } else {
        fuse_reply_open(call, file);
    }
}

void close_node(fuse_req_t call, fuse_file_info * /*file*/)
{
    Sim_Device_Close(cuse_of(call)->device);
    fuse_reply_err(call, 0);
}

void read_node(fuse_req_t call, size_t /*size*/, off_t /*offset*/, fuse_file_info * /*file*/)
{
    fuse_reply_buf(call, nullptr, 0);
}

/* The kernel has copied the record in and will copy it out, by the size and the direction that the
 * request number states; for other numbers there may be less, or nothing. */
void request(fuse_req_t call, int number, void * /*argument*/, fuse_file_info * /*file*/,
             unsigned /*flags*/, const void *in, size_t inSize, size_t /*outSize*/)
{
    MDIO_Record record = {};
    if (inSize == sizeof record) {
        std::memcpy(&record, in, sizeof record);
    }
    const int error =
        Sim_Device_Request(cuse_of(call)->device, static_cast<unsigned>(number), &record);
    if (error != 0) {
        fuse_reply_err(call, error);
    } else {
        fuse_reply_ioctl(call, 0, &record, sizeof record);
    }
}

constexpr cuse_lowlevel_ops OPERATIONS = {
    .init = nullptr,
    .init_done = note_ready,
    .destroy = nullptr,
    .open = open_node,
    .read = read_node,
    .write = nullptr,
    .flush = nullptr,
    .release = close_node,
    .fsync = nullptr,
    .ioctl = request,
    .poll = nullptr,
};

fuse_session *new_session(Sim_Cuse *cuse, const char *name)
{
    char program[] = "mdio_simulator"; /* begins the library's messages */
    char *words[] = {program, nullptr};
    fuse_args arguments = {1, words, 0};
    char variable[NAME_SIZE];
    snprintf(variable, sizeof variable, "DEVNAME=%s", name);
    const char *variables[] = {variable};
    cuse_info information = {};
    information.dev_info_argc = 1;
    information.dev_info_argv = variables;
    fuse_session *session = cuse_lowlevel_new(&arguments, &information, &OPERATIONS, cuse);
    fuse_opt_free_args(&arguments); /* the library has made copies of them */
    return session;
}

/* A session takes an open descriptor in place of a mount point when it is written so. */
bool attach(fuse_session *session, int descriptor)
{
    char place[32];
    snprintf(place, sizeof place, "/dev/fd/%d", descriptor);
    return fuse_session_mount(session, place) == 0;
}

} // namespace

bool Sim_Cuse_Start(Sim_Cuse *cuse, Sim_Device *device, const char *name, int descriptor)
{
    *cuse = {device, nullptr, nullptr, false};
    cuse->session = new_session(cuse, name);
    if (cuse->session != nullptr && attach(cuse->session, descriptor)) {
        return true;
    }
    close(descriptor);
    Sim_Cuse_Stop(cuse);
    return false;
}

int Sim_Cuse_Descriptor(const Sim_Cuse &cuse)
{
    return fuse_session_fd(cuse.session);
}

Sim_Cuse_Step Sim_Cuse_Serve(Sim_Cuse *cuse)
{
    fuse_buf call = {};
    call.mem = cuse->memory;
    const int got = fuse_session_receive_buf(cuse->session, &call);
    cuse->memory = call.mem;
    if (got > 0) {
        fuse_session_process_buf(cuse->session, &call);
    }
    if (got == -EINTR || got == -EAGAIN) {
        return SIM_CUSE_GOES_ON;
    }
    if (got <= 0 || fuse_session_exited(cuse->session) != 0) {
        errno = got < 0 ? -got : ENODEV;
        return SIM_CUSE_LOST;
    }
    return Sim_Device_Is_Gone(*cuse->device) ? SIM_CUSE_GONE : SIM_CUSE_GOES_ON;
}

void Sim_Cuse_Stop(Sim_Cuse *cuse)
{
    if (cuse->session != nullptr) {
        fuse_session_destroy(cuse->session);
    }
    free(cuse->memory);
    cuse->session = nullptr;
    cuse->memory = nullptr;
}
