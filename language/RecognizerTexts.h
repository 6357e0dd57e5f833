#pragma once

#include "language/Text.h"

/// Why recognition does not work, as commands and the recogniser's log say it; see Texts.h.
namespace tavelo::language::words {

// The process.
inline constexpr Text recognitionStopped{"recognition has stopped", "việc nhận dạng đã dừng"};
inline constexpr Text processIsSilent{"the recogniser process does not answer",
                                      "tiến trình nhận dạng không trả lời"};
inline constexpr Text processUnused{"the recogniser process was ended: nobody used it",
                                    "tiến trình nhận dạng đã được kết thúc vì không ai dùng"};
inline constexpr Text modelNotLoaded{"the model cannot be loaded", "không nạp được mô hình"};
inline constexpr Text protocolBroken{"the recogniser process breaks its protocol",
                                     "tiến trình nhận dạng trả lời sai quy ước"};
inline constexpr Text processFailed{"the recogniser process failed: {0}", "tiến trình nhận dạng bị lỗi: {0}"};
inline constexpr Text logEndsWith{"{0}; its log ends with: {1}", "{0}; nhật ký của nó kết thúc bằng: {1}"};
inline constexpr Text wroteTooMuch{"it wrote too much", "nó ghi ra quá nhiều"};
inline constexpr Text wroteNoReplies{"it wrote something else than replies",
                                     "nó ghi ra thứ không phải câu trả lời"};
inline constexpr Text endedWithStatus{"it ended with status {0}", "nó kết thúc với mã {0}"};
inline constexpr Text wasEnded{"it was ended", "nó bị buộc dừng"};
inline constexpr Text endedBySignal{"signal {0} ended it", "tín hiệu {0} làm nó dừng"};
inline constexpr Text noDescriptors{"no more file descriptors", "chương trình đã mở quá nhiều tệp"};
inline constexpr Text noModelFolder{"no model folder for {0}: {1}", "không có thư mục mô hình cho {0}: {1}"};
inline constexpr Text userDataFolder{"the user's data folder", "thư mục dữ liệu của người dùng"};

// The server.
inline constexpr Text noAddress{"\"{0}\" is no recogniser's address: {1}",
                                "\"{0}\" không phải là địa chỉ của bộ nhận dạng: {1}"};
inline constexpr Text addressShape{"it must look like ws://host:port", "nó phải có dạng ws://máy:cổng"};
inline constexpr Text addressStart{"it must begin with ws:// or wss://",
                                   "nó phải bắt đầu bằng ws:// hoặc wss://"};
inline constexpr Text addressWithoutHost{"the host is missing", "thiếu tên máy"};
inline constexpr Text addressWithPortZero{"0 is no port", "0 không phải là một cổng"};
inline constexpr Text addressWithFragment{"it must not contain a #", "nó không được chứa dấu #"};
inline constexpr Text serverKnowsVietnamese{"the server is taken to know Vietnamese only",
                                            "máy chủ được coi là chỉ biết tiếng Việt"};
inline constexpr Text noAnswerWithin{"no answer within {0} ms", "không có câu trả lời trong {0} ms"};
inline constexpr Text noAnswerAtAll{"no answer", "không có câu trả lời"};
inline constexpr Text serverIsFull{"the server is full: all of it is in use now; try again later",
                                   "máy chủ đã đầy: mọi chỗ của nó đang có người dùng; hãy thử lại sau"};
inline constexpr Text serverRefuses{"what answers there is no recogniser: it says {0}",
                                    "nơi trả lời không phải là bộ nhận dạng: nó đáp {0}"};
inline constexpr Text noRecogniserThere{"what answers there is no recogniser",
                                        "nơi trả lời không phải là bộ nhận dạng"};

// The model's files.
inline constexpr Text atPlace{"{0}: {1}", "{0}: {1}"};
inline constexpr Text fileMissing{"{0} is not a file", "{0} không phải là tệp"};
inline constexpr Text fileUnreadable{"{0} cannot be read", "{0} không đọc được"};
inline constexpr Text fileUnreadableBecause{"{0} cannot be read: {1}", "{0} không đọc được: {1}"};
inline constexpr Text notOnnx{"{0} is not a whole ONNX file; fetch the model again",
                              "{0} không phải là một tệp ONNX nguyên vẹn; hãy tải lại mô hình"};
inline constexpr Text badEncoder{
    "{0} is no usable encoder: its metadata has no usable {1}",
    "{0} không phải là encoder dùng được: phần mô tả của nó thiếu {1} dùng được"};
inline constexpr Text noEncoder{"{0} is no encoder: its metadata has {1}",
                                "{0} không phải là encoder: phần mô tả của nó có {1}"};
inline constexpr Text bareEncoder{"{0} has no metadata, so it is not an encoder for sherpa-onnx",
                                  "{0} không có phần mô tả, nên không phải là encoder cho sherpa-onnx"};
inline constexpr Text noDecoder{"{0} is no decoder: its metadata has no usable {1}",
                                "{0} không phải là decoder: phần mô tả của nó thiếu {1} dùng được"};
inline constexpr Text noJoiner{"{0} is no joiner", "{0} không phải là joiner"};
inline constexpr Text badTokenLine{"tokens.txt is damaged: line {0} is not a symbol and a number",
                                   "tokens.txt bị hỏng: dòng {0} không phải là một ký hiệu và một số"};
inline constexpr Text endlessTokenLine{"tokens.txt is damaged: it has an endless line",
                                       "tokens.txt bị hỏng: có một dòng dài vô tận"};
inline constexpr Text otherTokens{"tokens.txt does not belong to this model: it has no symbol for {0} of {1}",
                                  "tokens.txt không thuộc về mô hình này: thiếu ký hiệu {0} trên {1}"};
inline constexpr Text lacks{"{0} has no {1}", "{0} không có {1}"};
inline constexpr Text mixedParts{
    "{0} has encoder, decoder and joiner under names that do not belong together",
    "{0} có encoder, decoder và joiner nhưng tên của chúng không khớp nhau"};
inline constexpr Text noModelThere{
    "{0} holds no speech model: neither encoder, decoder, joiner and tokens.txt (sherpa-onnx) nor the folder "
    "am (Vosk)",
    "{0} không chứa mô hình nhận dạng nào: không có encoder, decoder, joiner và tokens.txt (sherpa-onnx), "
    "cũng không có thư mục am (Vosk)"};

// The libraries.
inline constexpr Text cannotBeLoaded{"{0}: cannot be loaded", "{0}: không nạp được"};
inline constexpr Text sherpaRefuses{"{0}: sherpa-onnx cannot use the model: {1}",
                                    "{0}: sherpa-onnx không dùng được mô hình: {1}"};
inline constexpr Text voskRefuses{"{0}: libvosk cannot load the model",
                                  "{0}: libvosk không nạp được mô hình"};
inline constexpr Text libraryLacks{"{0}: has no {1}", "{0}: thiếu {1}"};
inline constexpr Text notSherpa{"{0}: not sherpa-onnx, or too old (1.13 or newer is needed): has no {1}",
                                "{0}: không phải sherpa-onnx, hoặc quá cũ (cần 1.13 trở lên): thiếu {1}"};
inline constexpr Text sherpaTooOld{"{0}: sherpa-onnx {1} is too old; 1.13 or newer is needed",
                                   "{0}: sherpa-onnx {1} quá cũ; cần 1.13 trở lên"};
inline constexpr Text sherpaTooNew{"{0}: sherpa-onnx {1} is newer than this program knows: {2}",
                                   "{0}: sherpa-onnx {1} mới hơn bản mà chương trình này biết: {2}"};
inline constexpr Text noPipe{"no pipe to ask it through", "không tạo được đường ống để hỏi nó"};
inline constexpr Text noProcess{"no process to ask it in", "không tạo được tiến trình để hỏi nó"};
inline constexpr Text otherLayout{"its structures have another layout", "cấu trúc của nó khác đi"};
inline constexpr Text refusesFiles{"it refuses the files", "nó từ chối các tệp"};
inline constexpr Text cannotBegin{"it cannot begin a recognition", "nó không bắt đầu nhận dạng được"};

}  // namespace tavelo::language::words
