#include "bench/Dictation.h"

#include <array>
#include <random>
#include <string_view>

namespace tavelo::bench {
namespace {

constexpr std::array<std::string_view, 16> sentences{
    "chào chị Hương dấu phẩy em gửi chị bản kế hoạch của quý tới dấu chấm ",
    "hôm nay trời mưa từ sáng sớm nên đường về nhà khá đông dấu chấm xuống dòng ",
    "anh có thể xem giúp em phần thứ ba trước buổi họp chiều nay không dấu chấm hỏi ",
    "danh sách cần mua dấu hai chấm gạo dấu phẩy trứng dấu phẩy rau muống và một chai nước mắm dấu chấm ",
    "xuống dòng cuộc họp bắt đầu lúc 9 giờ 30 tại phòng số 4 dấu chấm phẩy mọi người đến sớm năm phút ",
    "tôi nghĩ rằng chúng ta nên thử cách làm đơn giản nhất trước  rồi mới tính đến chuyện khác dấu chấm ",
    "thật là tuyệt vời dấu chấm than dòng mới cảm ơn cả nhóm đã cố gắng suốt tuần qua dấu chấm ",
    "bà ngoại kể ngày xưa ở làng có một cây đa rất to mở ngoặc nay không còn nữa đóng ngoặc bên bờ sông ",
    "chuyến tàu Hà Nội gạch ngang Đà Nẵng khởi hành lúc bảy giờ tối dấu chấm ",
    "em đã gọi cho bên giao hàng hai lần nhưng không ai nghe máy dấu phẩy mai em sẽ gọi lại\t\t dấu chấm ",
    "nếu được thì anh ký giúp em hai bản hợp đồng rồi gửi lại qua bưu điện chấm xuống dòng ",
    "quyển sách này viết về những người thợ gốm ở một làng nghề nhỏ ven sông Hồng dấu chấm ",
    "mình đặt bàn cho sáu người vào tối thứ bảy dấu phẩy gần cửa sổ thì càng tốt dấu chấm ",
    "con mèo nhà bên cạnh lại trèo sang mái hiên nằm sưởi nắng cả buổi sáng dấu chấm ",
    "xin lỗi dấu phẩy tôi nghe chưa rõ dấu phẩy bạn nhắc lại số điện thoại được không dấu chấm hỏi ",
    "phần mềm mới chạy nhanh hơn nhiều so với bản cũ và ít khi phải khởi động lại máy dấu chấm ",
};

}  // namespace

std::string dictation(std::size_t length) {
  std::mt19937 random(20);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same text in every run.
  std::string text;
  text.reserve(length + 256);
  while (text.size() < length) text += sentences[random() % sentences.size()];
  text.resize(text.rfind(' ', length));
  return text;
}

}  // namespace tavelo::bench
