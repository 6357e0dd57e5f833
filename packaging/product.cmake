# What a maker fills in: shown in the About panel, nowhere else.
set(TAVELO_MAKER_NAME "Nguyễn Văn A")
set(TAVELO_SITE_DOMAIN "tavelo.example")
set(TAVELO_SITE_ADDRESS "https://tavelo.example")
