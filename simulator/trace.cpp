#include "simulator/trace.h"

#include <cerrno>

namespace
{

int trace(void *context, unsigned long number, MDIO_Record *record)
{
    auto *tracer = static_cast<Sim_Trace *>(context);
    const int answer = Sim_Layer_Pass(tracer->layer, number, record);
    const int requestError = errno; /* goes to the caller */
    char line[SIM_TRACE_LINE];
    Sim_Trace_Line(*record, line);
    if (fprintf(tracer->file, "%s\n", line) < 0 && tracer->error == 0) {
        tracer->error = errno;
    }
    errno = requestError;
    return answer;
}

int record_request(void *context, unsigned long number, MDIO_Record *record)
{
    auto *recorder = static_cast<Sim_Recorder *>(context);
    const int answer = Sim_Layer_Pass(recorder->layer, number, record);
    recorder->records.push_back(*record);
    return answer;
}

int count(void *context, unsigned long number, MDIO_Record *record)
{
    auto *counters = static_cast<Sim_Counters *>(context);
    const int answer = Sim_Layer_Pass(counters->layer, number, record);
    ++(record->operation == MDIO_WRITE ? counters->writes : counters->reads);
    counters->failed += answer < 0 ? 1 : 0;
    return answer;
}

} // namespace

void Sim_Trace_Line(const MDIO_Record &record, char (&line)[SIM_TRACE_LINE])
{
    snprintf(line, sizeof line, "%c %02x %02x %04x", record.operation == MDIO_WRITE ? 'W' : 'R',
             static_cast<unsigned>(record.phyAddress), static_cast<unsigned>(record.registerNumber),
             static_cast<unsigned>(record.value));
}

FILE *Sim_Trace_Open(const char *path)
{
    FILE *file = fopen(path, "we");
    if (file != nullptr) {
        setvbuf(file, nullptr, _IOLBF, BUFSIZ);
    }
    return file;
}

bool Sim_Trace_Install(Sim_Trace *trace_layer, FILE *file)
{
    if (!Sim_Layer_Install(&trace_layer->layer, {trace, trace_layer})) {
        return false;
    }
    trace_layer->file = file;
    trace_layer->error = 0;
    return true;
}

bool Sim_Trace_Close(Sim_Trace *trace)
{
    const bool closed = fclose(trace->file) == 0;
    if (trace->error != 0) {
        errno = trace->error;
    }
    return closed && trace->error == 0;
}

bool Sim_Recorder_Install(Sim_Recorder *recorder)
{
    return Sim_Layer_Install(&recorder->layer, {record_request, recorder});
}

bool Sim_Counters_Install(Sim_Counters *counters)
{
    return Sim_Layer_Install(&counters->layer, {count, counters});
}
