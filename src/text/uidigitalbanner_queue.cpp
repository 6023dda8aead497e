// uiDigitalBanner: the message queue, sorted by priority and bounded by maxMessages.
#include "core/uiutil.h"
#include "logger.h"
#include "uidigitalbanner.h"

dbMessage_t* uiDigitalBanner::_addMessage(unsigned int priority) {
    // A queue holding more than maxMessages (the limit was lowered later) counts as full.
    if (messageCount >= maxMessages) {
        if (maxMessages == 0) return nullptr;
        dbMessage_t* last = messages;
        while (last->next)
            last = last->next;
        if (last->priority <= priority) return nullptr;
        _removeMessage(last);
    }

    dbMessage_t* message = UI_POOL_NEW(dbMessage_t, kUIPool);
    if (!message) {
        Logger::log(Logger::kError, "Digital Banner could not add message: Out of memory.\f");
        return nullptr;
    }
    message->priority = priority;

    // Equal priorities keep their print order.
    dbMessage_t** link = &messages;
    while (*link && (*link)->priority <= priority)
        link = &(*link)->next;
    message->next = *link;
    *link = message;
    ++messageCount;
    return message;
}

void uiDigitalBanner::_removeMessage(dbMessage_t* message) {
    dbMessage_t** link = &messages;
    while (*link && *link != message)
        link = &(*link)->next;
    if (!message || !*link) return;
    *link = message->next;
    _releasePieces(message);
    ui::poolDelete(kUIPool, message);
    --messageCount;
}

void uiDigitalBanner::_removeAllMessages() {
    while (messages)
        _removeMessage(messages);
}

void uiDigitalBanner::_releasePieces(dbMessage_t* message) {
    if (message->pieces) g_MemoryPtr->free(kUIPool, message->pieces);
    message->pieces = nullptr;
    message->pieceCount = 0;
    message->length = 0;
    message->started = false;
}
